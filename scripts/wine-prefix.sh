# Sourced: a Wine prefix of the project's own under build/wine/, never the user's.
#
# use_prefix NAME makes build/wine/NAME if it is missing and exports what Wine needs to run in it.
#   test   no display is needed: windows live on a null driver, and sound goes nowhere
#   en     English, on the display
#   ja     Japanese, on the display
# Another name that ends in -test, -en or -ja is a further prefix of that sort.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEARCH=win32 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree=;mshtml="

# One fresh prefix is made once and copied for each use: a copy takes a third of the time.
make_base_prefix() {
  local base=$root/build/wine/base
  [ -e "$base/.complete" ] && return 0
  rm -rf "$base"
  mkdir -p "$base"
  (
    export WINEPREFIX=$base LC_ALL=C.UTF-8
    unset DISPLAY
    wineboot -i
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
    # A crash ends the program instead of waiting in a debugger.
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d false /f
    # Themed scroll bars are drawn some hundred times slower.
    wine reg add 'HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager' /v ThemeActive /d 0 /f
    wineserver -k || true
    wineserver -w
    # Without Wine's own fonts the dialog font falls back to another, and dialogs grow.
    cp /usr/share/wine/fonts/*.ttf "$base/drive_c/windows/Fonts/"
  ) >"$base/setup.log" 2>&1 </dev/null || { tail -n 5 "$base/setup.log" >&2; return 1; }
  touch "$base/.complete"
}

# Wine takes its language from the locale, which this machine need not have: a copy of C.UTF-8 under that name does.
make_japanese_locale() {
  local locales=$root/build/wine/locales
  [ -e "$locales/ja_JP.UTF-8" ] && return 0
  mkdir -p "$locales"
  cp -r /usr/lib/locale/C.utf8 "$locales/ja_JP.UTF-8"
}

# The font with Japanese letters shows a yen sign in paths. The copy in the prefix, which Wine takes first, does not.
draw_backslash() {
  local font=/usr/share/fonts/opentype/ipafont-gothic/ipagp.ttf fonts=$WINEPREFIX/drive_c/windows/Fonts
  [ -e "$fonts/ipagp.ttf" ] || [ ! -e "$font" ] || "$root/scripts/backslash-font" <"$font" >"$fonts/ipagp.ttf"
}

use_prefix() {
  local name=$1 kind=${1##*-}
  export WINEPREFIX=$root/build/wine/$name LC_ALL=C.UTF-8
  if [ "$kind" = ja ]; then
    make_japanese_locale
    export LOCPATH=$root/build/wine/locales
    { export LC_ALL=ja_JP.UTF-8; } 2>/dev/null # for Wine; this shell itself need not know it
  fi
  if [ "$kind" = test ]; then
    unset DISPLAY
    # Sound goes nowhere, and does so on a machine without a device as well.
    export ALSA_CONFIG_PATH=$root/build/wine/no-sound.conf
    mkdir -p "$root/build/wine"
    [ -e "$ALSA_CONFIG_PATH" ] || echo 'pcm.!default { type null } ctl.!default { type null }' >"$ALSA_CONFIG_PATH"
  fi
  if [ ! -e "$WINEPREFIX/.ready" ]; then
    make_base_prefix
    rm -rf "$WINEPREFIX"
    cp -a "$root/build/wine/base" "$WINEPREFIX"
    case $kind in
      test) wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f ;;
      en) local font
        for font in Tahoma 'MS Shell Dlg' 'MS Shell Dlg 2' 'MS UI Gothic' 'MS PGothic'; do
          wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d IPAPGothic /f
        done ;;
      ja) # Wine would take the font of even widths, whose underscores it cuts off.
        wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'MS UI Gothic' /d IPAPGothic /f ;;
    esac >/dev/null 2>&1 </dev/null
    wineserver -k || true
    wineserver -w
    touch "$WINEPREFIX/.ready"
  fi
  if [ "$kind" = en ]; then draw_backslash; fi
  # Stays for a while, so that the next start is a warm one; and without our output, whose reader would wait for it.
  wineserver -p30 >/dev/null 2>&1 || true # fails where it runs already
}

# Where the program keeps its settings.
settings='HKCU\Software\UTAU Plugin\Marlit'

# Makes a program the resampler, unless one was chosen. The path is kept as a block of 260 wide characters.
choose_resampler() {
  wine reg query "$settings" /v Resampler >/dev/null 2>&1 && return 0
  local path block
  path=$(winepath -w "$1")
  block=$(printf %s "$path" | iconv -f UTF-8 -t UTF-16LE | od -A n -v -t x1 | tr -d ' \n')
  block=$block$(printf '%01040d' 0)
  wine reg add "$settings" /v Resampler /t REG_BINARY /d "${block:0:1040}" /f >/dev/null 2>&1 </dev/null
}
