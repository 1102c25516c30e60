#!/usr/bin/env bash
# Installs what building, testing and running Marlit on Linux needs, and nothing else.
# Called by ./run, ./test and ./bench; does nothing where all is there.
#
#   --allow-downgrades   take the packages from the base release without asking, if the two
#                        architectures of this machine do not agree (see install_from_base)
#   --fuzz               also what scripts/fuzz needs
#   --voices             also what ./bench voices needs
set -euo pipefail

packages=(
  wine wine32:i386 g++-mingw-w64-i686-posix g++ cmake ninja-build googletest libcli11-dev nlohmann-json3-dev
  libfftw3-dev xvfb imagemagick fonts-ipafont-gothic fonts-wine python3 python3-selenium chromium
  chromium-driver
)
allow_downgrades=${CI:+yes}
for argument in "$@"; do
  case $argument in
    --allow-downgrades) allow_downgrades=yes ;;
    --fuzz) packages+=(clang libclang-rt-14-dev) ;;
    --voices) packages+=(ffmpeg python3-numpy python3-scipy praat sptk aubio-tools) ;;
    *) echo "setup: what is $argument?" >&2; exit 2 ;;
  esac
done

installed() {
  local package
  for package in "${packages[@]}"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || return 1
  done
}

root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }

apt_install() { root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "$@" "${packages[@]}"; }

# 32-bit Wine needs the very versions of the 64-bit libraries. A machine with newer security updates than the
# 32-bit index offers can only agree with itself on the versions of the base release, which takes libraries back.
install_from_base() {
  if [ "$allow_downgrades" != yes ]; then
    echo "The 32-bit packages do not fit this machine's 64-bit ones. Taking both from the base release works," >&2
    echo "but sets some libraries back to older versions." >&2
    local answer=
    [ -t 0 ] && read -r -p "Do that? [y/N] " answer
    [ "$answer" = y ] || { echo "Not done. scripts/setup.sh --allow-downgrades does it without asking." >&2; return 1; }
  fi
  echo "setup: taking the packages from the base release; some libraries are set back to older versions" >&2
  local pins codename
  codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
  pins=$(mktemp)
  printf 'Package: *\nPin: release n=%s\nPin-Priority: 1001\n' "$codename" >"$pins"
  chmod 644 "$pins"
  apt_install --allow-downgrades -o Dir::Etc::preferences="$pins"
  rm -f "$pins"
}

main() {
  command -v dpkg-query >/dev/null || {
    echo "setup: this is no Debian; install the equivalents of: ${packages[*]}" >&2
    return 0
  }
  installed && return 0
  if [ "$(id -u)" != 0 ] && ! command -v sudo >/dev/null; then
    echo "setup: as root, run: dpkg --add-architecture i386; apt-get update; apt-get install ${packages[*]}" >&2
    return 1
  fi
  echo "setup: installing packages" >&2
  root dpkg --add-architecture i386
  root apt-get update -q || true # an index that is out of reach does not matter if the others hold the packages
  apt_install || install_from_base
}

log=$(mktemp)
if main >"$log" 2> >(tee -a "$log" >&2); then rm -f "$log"; else
  tail -n 20 "$log" >&2
  exit 1
fi
