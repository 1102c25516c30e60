#!/usr/bin/env bash
# scripts/pictures.sh [LANGUAGE-DPI ...]   shoots every window of the program on a virtual display, for the manual and for
# looking at: docs/pictures/LANGUAGE-DPI/NAME.png. Without arguments: en-96 en-144 ja-96 ja-144.
#
# The pictures that the manual shows are those at 96 dpi; copies of them go beside it, so that docs/manual can be copied
# as it is. Needs what ./run has built.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/wine-prefix.sh
. scripts/tour.sh

built=$root/build/product/bin
manual=$root/docs/manual

# Where the program lies in the pictures, which show its path and those of the voicebanks.
home='C:\Marlit'
voice='C:\voice'

bare_title='^(Marlit|マーリット)$' # of questions; the editor's own is longer once a voicebank is open

pictures_of() {
  local language=${1%-*}
  dpi=${1#*-}
  start_display "$((1600 * dpi / 96))x$((900 * dpi / 96))"
  pictures=$root/docs/pictures/$1
  rm -rf "$pictures"
  mkdir -p "$pictures"
  use_prefix "pictures-$language"
  drive=$WINEPREFIX/drive_c
  set_dpi
  install_program
  echo "$1"
  shoot_main_windows
  shoot_dialogs
  shoot_jobs
  shoot_what_is_kept
  shoot_restricted_folder
  [ "$dpi" != 96 ] || copy_to_manual "$language"
  du -sh "$pictures"
}

# The server keeps the screen's dots per inch from its start on.
set_dpi() {
  wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null 2>&1
  wineserver -k || true
  wineserver -w
  wineserver -p30 >/dev/null 2>&1
}

# The settings are those of a first start, nothing is kept of earlier runs, and the sample voicebank is as the program
# that makes it leaves it.
install_program() {
  rm -rf "$drive/Marlit" "$drive/voice" "$drive/Program Files/voice" "$drive"/users/*/AppData/Local/Marlit
  mkdir -p "$drive/Marlit" "$drive/voice"
  cp "$built"/{marlit.exe,checkfrq.dll,basic-resampler.exe} "$drive/Marlit/"
  wine "$built/make-samplebank.exe" "$voice\\sample"
  forget_settings
}

forget_settings() {
  wine reg delete "$settings" /f >/dev/null 2>&1 || true
}

# open_program FOLDER [RESAMPLER]: with a resampler of that file name; its windows at their first size as $editor and $list.
open_program() {
  start_program "$@"
  find_main_windows
}

start_program() {
  local resampler=${2:-basic-resampler.exe}
  forget_settings
  [ -e "$drive/Marlit/$resampler" ] || cp "$built/basic-resampler.exe" "$drive/Marlit/$resampler"
  choose_resampler "$drive/Marlit/$resampler"
  wine "$home\\marlit.exe" "$1" &
  program=$!
}

find_main_windows() {
  find_window ' - (Marlit|マーリット)$'
  editor=$window
  find_window '^(Files|原音一覧)$'
  list=$window
  settle
  measure_editor
}

close_program() {
  local attempt
  to_editor
  keys ctrl+q
  if [ "${1:-}" = discard ]; then xdotool key y; fi
  for attempt in $(seq 60); do
    kill -0 "$program" 2>/dev/null || return 0
    sleep 0.5
  done
  echo "pictures: the program does not end" >&2
  return 1
}

# Keys for whatever has the focus, one after the other.
keys() {
  local key
  for key in "$@"; do
    xdotool key --clearmodifiers "$key"
    settle
  done
}

# picture NAME WINDOW [WINDOW]: the screen, cut to the windows named.
picture() {
  local name=$1 id left=100000 top=100000 right=0 bottom=0
  shift
  for id in "$@"; do
    local WINDOW X Y WIDTH HEIGHT SCREEN
    eval "$(xdotool getwindowgeometry --shell "$id")"
    left=$((X < left ? X : left))
    top=$((Y < top ? Y : top))
    right=$((X + WIDTH > right ? X + WIDTH : right))
    bottom=$((Y + HEIGHT > bottom ? Y + HEIGHT : bottom))
  done
  import -window root -crop "$((right - left))x$((bottom - top))+$left+$top" +repage -strip +dither -colors 256 \
    -define png:compression-level=9 "PNG8:$pictures/$name.png"
}

# shot NAME TITLE: the window of that title, when it has come to rest; as $window.
shot() {
  find_window "$2"
  settle
  find_window "$2" # a dialog of the system's may have begun with another window
  picture "$1" "$window"
}

shoot_main_windows() {
  open_program "$voice\\sample"
  to_editor
  picture start "$editor" "$list"
  enlarge_editor_for_pictures
  picture files "$list"
  shoot_correction
  shoot_spectrum
  shoot_menus
  close_program discard
}

enlarge_editor_for_pictures() {
  enlarge_editor "$((150 * dpi / 96))" "$((110 * dpi / 96))"
}

# The syllable か and the octave error in the middle of it, halved by the button under the list.
shoot_correction() {
  local map=$drive/voice/sample/か_wav.frq number step
  read -r number _ <<<"$(first_high_frame "$map")"
  to_editor
  click_editor 50 60 # the frame list, so that the keys below go to the editor
  for step in 1 2 3 4 5 6 7 8; do keys ctrl+Down; done
  show_closely "$number"
  click_editor 50 60
  picture editor "$editor"
  xdotool key Home
  xdotool key --delay 5 --repeat "$number" Down
  xdotool key --delay 5 --repeat 11 shift+Down
  settle
  picture error-selected "$editor"
  click_button 52
  xdotool click 1
  settle
  picture error-halved "$editor"
  keys ctrl+q
  shot discard "$bare_title"
  keys Escape
}

# show_closely COLUMN: three steps of zoom, the octaves of a voice, and a place in the syllable.
show_closely() {
  point_at_table 100 200
  xdotool keydown ctrl click --repeat 3 --delay 30 4 keyup ctrl
  xdotool click --repeat 20 --delay 30 4
  xdotool keydown shift click --repeat "$((($1 - 20) / 4))" --delay 30 5 keyup shift
  settle
}

# One of the buttons under the list, which keep their distance from the window's lower edge.
click_button() {
  local WINDOW X Y WIDTH HEIGHT SCREEN x y
  eval "$(xdotool getwindowgeometry --shell "$editor")"
  x=$(awk -v o="$origin_x" -v u="$unit_x" -v at="$1" 'BEGIN { printf "%d", o + u * at }')
  y=$(awk -v h="$HEIGHT" -v u="$unit_y" 'BEGIN { printf "%d", h - 4 - u * 12 }')
  xdotool mousemove --window "$editor" "$x" "$y" click 1
}

# The button over the table is 20 pixels wide and high, 18 from its corner; the label stands right of it.
shoot_spectrum() {
  click_table 28 28
  settle
  picture spectrum "$editor"
  click_table 49 28
  settle
  picture brightness "$editor"
  click_table 49 28
  click_table 28 28 3
  settle
  picture colors "$editor"
  keys Escape
}

click_table() {
  point_at_table "$1" "$2"
  xdotool click "${3:-1}"
}

# A place in the table in pixels of 96 dpi.
point_at_table() {
  local x y edge=2
  x=$(awk -v o="$origin_x" -v u="$unit_x" -v e="$edge" -v at="$(($1 * dpi / 96))" 'BEGIN { printf "%d", o + u * 237 + e + at }')
  y=$(awk -v o="$origin_y" -v u="$unit_y" -v e="$edge" -v at="$(($2 * dpi / 96))" 'BEGIN { printf "%d", o + u * 7 + e + at }')
  xdotool mousemove --window "$editor" "$x" "$y"
}

# F10 leaves a menu, however far it is open.
shoot_menus() {
  local menu
  for menu in file:f recent:f,f edit:e view:v view-colors:v,s,c tool:t help:h; do
    to_editor
    open_menu "${menu#*:}"
    picture "menu-${menu%%:*}" "$editor"
    keys F10
  done
}

# By F10: a control of the window takes the key of one of the menus where it is pressed with Alt.
open_menu() {
  keys F10 ${1//,/ }
}

shoot_dialogs() {
  open_program "$voice\\sample"
  enlarge_editor_for_pictures
  to_editor
  keys F10 e c
  shot convert '^(Convert frequency map|周波数表を変換)$'
  keys Escape
  to_editor
  keys F10 t o
  shot option '^(Option|オプション)$'
  keys Escape
  to_editor
  keys F10 h a
  shot about '^(About|バージョン情報)$'
  keys Escape
  to_editor
  keys ctrl+o
  shot open-folder '^(Select Folder|Open|フォルダーの選択|開く|ファイルを開く)$'
  keys Escape
  shoot_check
  close_program
}

# By arrow keys: the item has an access key in one language only.
shoot_check() {
  show_closely 24
  to_editor
  keys F10 e m
  to_editor
  keys F10 Right Right Right Down Return
  shot check '^(Check frequency maps|周波数表をチェックする)$'
  keys Return
  shot modify '^(Modify Frequency Maps|周波数表の修正)$'
  drag_below_editor "$window"
  picture checked "$editor"
  picture files-checked "$list"
  to_editor
  xdotool key --repeat 9 --delay 200 ctrl+Up # the thumbnails begin with the syllable in view
  keys F10 v t
  shot thumbnails '^(Thumbnail|サムネイル)$'
  xdotool windowfocus "$window"
  keys Escape
}

drag_below_editor() {
  local WINDOW X Y WIDTH HEIGHT SCREEN bottom
  eval "$(xdotool getwindowgeometry --shell "$editor")"
  bottom=$((Y + HEIGHT))
  eval "$(xdotool getwindowgeometry --shell "$1")"
  xdotool mousemove "$((X + 50))" "$((Y + 10))" mousedown 1
  xdotool mousemove "$((X + 40))" "$((bottom + 10))" mousemove "$((X + 50))" "$((bottom + 20))" mouseup 1
  settle
}

# Jobs: of the two kinds that ask before, and one that takes long enough to be seen.
shoot_jobs() {
  local i bank=$drive/voice/many
  mkdir -p "$bank"
  for i in $(seq 100 199); do cp "$drive/voice/sample/あ.wav" "$bank/あ_$i.wav"; done
  open_program "$voice\\many"
  to_editor
  keys F10 e
  xdotool key m
  find_window '^(Creating Frequency Maps|周波数表を作成しています)$'
  sleep 1 # the picture changes all the time
  picture creating "$window"
  until ! xdotool search --onlyvisible --name '^(Creating Frequency Maps|周波数表を作成しています)$' >/dev/null 2>&1; do
    sleep 0.5
  done
  close_program

  open_program "$voice\\sample" vs4u.exe
  to_editor
  keys F10 e m
  shot vs4ufrq '^(vs4ufrq Settings|vs4ufrq 設定)$'
  keys Escape
  close_program

  open_program "$voice\\sample" moresampler.exe
  to_editor
  keys F10 e m
  settle
  picture files-mrq "$list"
  to_editor
  keys F10 e i
  shot initialize-question "$bare_title"
  keys y
  shot initialize-mrq '^(Initialize frequency maps?|周波数表の初期化)$'
  keys Escape
  close_program
}

# Edits that a kill leaves are asked about by the next start; behind their save, and with a map made anew, there are maps
# that were kept; and a save asks about another program's change.
shoot_what_is_kept() {
  open_program "$voice\\sample"
  edit_three_syllables
  sleep 1.2 # the journal is on the disk within a second
  kill -9 "$program"
  wait "$program" 2>/dev/null || true

  start_program "$voice\\sample"
  shot left-edits "$bare_title"
  xdotool mousemove --window "$window" 60 10 click 1 # without a window manager it has no focus yet
  settle
  keys y
  find_main_windows
  to_editor
  keys ctrl+shift+s ctrl+Down ctrl+Down ctrl+Down # え
  keys F10 e i y
  sleep 1
  settle
  to_editor
  keys F10 e k
  find_window '^(Kept frequency maps|保管された周波数表)$'
  keys Down shift+Down
  picture kept-maps "$window"
  keys Escape

  draw_stroke
  cp "$drive/voice/sample/い_wav.frq" "$drive/voice/sample/え_wav.frq"
  keys ctrl+s
  shot map-changed "$bare_title"
  keys Escape
  close_program discard
}

# あ, い and う, behind three with Latin names.
edit_three_syllables() {
  local count
  to_editor
  click_editor 50 60 # the frame list, so that the keys below go to the editor
  keys ctrl+Down ctrl+Down
  for count in 1 2 3; do
    keys ctrl+Down
    draw_stroke
  done
}

draw_stroke() {
  point_at_table 120 150
  xdotool mousedown 1
  point_at_table 180 160
  point_at_table 240 150
  xdotool mouseup 1
  settle
}

# The list comes up only when the warning has been closed.
shoot_restricted_folder() {
  cp -r "$drive/voice/sample" "$drive/Program Files/voice"
  start_program 'C:\Program Files\voice'
  shot restricted '^(Warning|注意)$'
  keys Return
  find_main_windows
  close_program
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

[ -e "$built/marlit.exe" ] || { echo "pictures: build first, for instance by ./run" >&2; exit 1; }
[ $# -gt 0 ] || set -- en-96 en-144 ja-96 ja-144
for set in "$@"; do (pictures_of "$set"); done
