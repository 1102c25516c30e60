#!/usr/bin/env bash
# scripts/pictures.sh [LANGUAGE-DPI ...]   shoots every window of the program on a virtual display, for the manual and for
# looking at: docs/pictures/LANGUAGE-DPI/NAME.png. Without arguments: en-96 en-144 ja-96 ja-144.
#
# The pictures that the manual shows are those at 96 dpi; copies of them go beside it, so that docs/manual can be copied
# as it is. Which there are is told by driver/pictures.cpp. Needs what ./run has built.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/wine-prefix.sh
. scripts/display.sh

driver=$root/build/product/bin/drive.exe
manual=$root/docs/manual

pictures_of() {
  local language=${1%-*} dpi=${1#*-} pictures=$root/docs/pictures/$1
  start_display "$((1600 * dpi / 96))x$((900 * dpi / 96))"
  use_prefix "pictures-$language"
  set_dpi "$dpi"
  forget_earlier_runs
  rm -rf "$pictures"
  mkdir -p "$pictures"
  echo "$1"
  wine "$driver" pictures --into "$(winepath -w "$pictures")"
  mogrify -strip +dither -colors 256 -define png:format=png8 -define png:compression-level=9 "$pictures"/*.png
  [ "$dpi" != 96 ] || copy_to_manual "$language"
  du -sh "$pictures"
}

# The server keeps the screen's dots per inch from its start on.
set_dpi() {
  wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1
  wineserver -k || true
  wineserver -w
  wineserver -p30 >/dev/null 2>&1
}

# The program and the voicebanks of the pictures, and what the program has kept.
forget_earlier_runs() {
  local drive=$WINEPREFIX/drive_c
  [[ $drive == "$root"/build/wine/* ]] || return 1
  rm -rf "$drive/Marlit" "$drive/voice" "$drive/Program Files/voice" "$drive"/users/*/AppData/Local/Marlit
}

copy_to_manual() {
  local language=$1 page=manual.html name
  [ "$language" = ja ] && page=manual-ja.html
  rm -rf "$manual/manual/$language"
  mkdir -p "$manual/manual/$language"
  for name in $(grep -o "manual/$language/[a-z0-9-]*\.png" "$manual/$page" | sort -u); do
    cp "$pictures/${name##*/}" "$manual/$name"
  done
}

[ -e "$driver" ] || { echo "pictures: build first, for instance by ./run" >&2; exit 1; }
[ $# -gt 0 ] || set -- en-96 en-144 ja-96 ja-144
for set in "$@"; do (pictures_of "$set"); done
