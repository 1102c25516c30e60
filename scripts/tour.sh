# Sourced by ./run where there is no display: the main job, done by mouse and keys on a virtual one.
#
# tour LANGUAGE PROGRAM MAKER [PATH]   opens PATH and shows it; without PATH, opens a copy of the sample voicebank, takes
# an octave error out of one frame, saves, creates the missing maps and visits the other windows. Screenshots are numbered in build/tour/LANGUAGE/.

tour() {
  local language=$1 program=$2 maker=$3 path=$4
  pictures=$root/build/tour/$language
  shot_number=0
  rm -rf "$pictures"
  mkdir -p "$pictures"
  start_display
  use_prefix "$language"
  forget_view
  choose_resampler "$(dirname "$program")/basic-resampler.exe"
  local bank=$path
  if [ -z "$path" ]; then
    bank=$pictures/voicebank
    wine "$maker" "$(winepath -w "$bank")"
  fi
  echo "Opening $bank"
  wine "$program" "$(winepath -w "$bank")" &
  local wine_process=$!
  # The title is that of the program: behind the voicebank's name where a folder was opened.
  find_window '(Marlit|マーリット)$'
  editor=$window
  find_window '^(Files|原音一覧)$'
  settle
  measure_editor
  shoot opened
  enlarge_editor
  [ -n "$path" ] || correct_a_frame "$bank"
  click_editor 254 27 # the button over the table
  shoot spectrum
  [ -n "$path" ] || visit_the_rest
  xdotool windowfocus "$editor"
  xdotool key --clearmodifiers ctrl+q
  wait "$wine_process"
  echo "Left the program; its screenshots are in $pictures"
}

# start_display [WIDTHxHEIGHT]
start_display() {
  local number=$root/build/display
  exec 3>"$number"
  # -r: no key repeats by itself where a busy machine is late with its release.
  Xvfb -r -wr -displayfd 3 -screen 0 "${1:-1600x900}x24" >/dev/null 2>&1 &
  display_process=$!
  exec 3>&-
  trap 'wineserver -k 2>/dev/null || true; kill $display_process 2>/dev/null || true' EXIT
  until [ -s "$number" ]; do sleep 0.1; done
  export DISPLAY=:$(cat "$number")
}

# The windows come up at their first size and place and with the first view, which the clicks below count on.
forget_view() {
  local value
  for value in EditorDlg FileListDlg FrqCtrlViewMode FrqCtrlZoom; do
    wine reg delete "$settings" /v "$value" /f >/dev/null 2>&1 || true
  done
}

# The first visible window with such a title, as $window; gives up after half a minute.
find_window() {
  local attempt
  for attempt in $(seq 150); do
    window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1) || true
    [ -n "$window" ] && return 0
    sleep 0.2
  done
  echo "tour: no window named $1" >&2
  return 1
}

# Waits until the screen stays the same.
settle() {
  local before='' now attempt
  for attempt in $(seq 50); do
    now=$(import -window root rgb:- | cksum)
    [ "$now" = "$before" ] && return 0
    before=$now
    sleep 0.3
  done
}

shoot() {
  settle
  shot_number=$((shot_number + 1))
  local picture
  picture=$pictures/$(printf '%02d' "$shot_number")-$1.png
  import -window root "$picture"
  echo "  $(basename "$picture")"
}

# Clicks into the editor at a place told in its dialog units. The window is measured before it is sized: its client area
# is 407 by 228 units then, and its frame, caption and menu take what Wine gives every window at $dpi dots per inch.
measure_editor() {
  local WINDOW X Y WIDTH HEIGHT SCREEN size=${dpi:-96}
  local frame=$((2 + 2 * size / 96)) caption=$((1 + 18 * size / 96)) menu=$((2 + 18 * size / 96))
  eval "$(xdotool getwindowgeometry --shell "$editor")"
  origin_x=$frame
  origin_y=$((frame + caption + menu))
  unit_x=$(awk -v w="$((WIDTH - 2 * frame))" 'BEGIN { print w / 407 }')
  unit_y=$(awk -v h="$((HEIGHT - origin_y - frame))" 'BEGIN { print h / 228 }')
}

# enlarge_editor [DX DY]: drags the lower right corner, which leaves the places in the editor's left half as they were.
enlarge_editor() {
  local dx=${1:-300} dy=${2:-160} WINDOW X Y WIDTH HEIGHT SCREEN
  eval "$(xdotool getwindowgeometry --shell "$editor")"
  xdotool mousemove "$((X + WIDTH - 2))" "$((Y + HEIGHT - 2))" mousedown 1
  xdotool mousemove "$((X + WIDTH + dx / 2))" "$((Y + HEIGHT + dy / 2))" mousemove "$((X + WIDTH + dx))" "$((Y + HEIGHT + dy))"
  xdotool mouseup 1
  settle
}

click_editor() {
  local x y
  x=$(awk -v o="$origin_x" -v u="$unit_x" -v at="$1" 'BEGIN { printf "%d", o + u * at }')
  y=$(awk -v o="$origin_y" -v u="$unit_y" -v at="$2" 'BEGIN { printf "%d", o + u * at }')
  xdotool mousemove --window "$editor" "$x" "$y" click 1
}

# The number of the first frame of a map whose frequency lies far above the map's average.
first_high_frame() {
  local average
  average=$(od -A n -t f8 -j 12 -N 8 "$1")
  od -A n -v -t f8 -j 40 -w16 "$1" | awk -v average="$average" '$1 > 1.6 * average { print NR - 1 " " $1; exit }'
}

# By the keys of the menus, which are the same in both languages.
visit_the_rest() {
  xdotool windowfocus "$editor"
  xdotool key --clearmodifiers alt+e
  xdotool key m
  shoot maps-created
  xdotool key --clearmodifiers alt+v
  xdotool key t
  find_window '^(Thumbnail|サムネイル)$'
  shoot thumbnails
  xdotool windowfocus "$window"
  xdotool key Escape
  settle
  xdotool windowfocus "$editor"
  xdotool key F10 Right Right Right Down Return
  shoot check
  xdotool key Return
  find_window '^(Modify Frequency Maps|周波数表の修正)$'
  shoot checked
  xdotool windowfocus "$window"
  xdotool key Escape
  settle
}

correct_a_frame() {
  local bank=$1 map=$1/か_wav.frq number frequency
  read -r number frequency <<<"$(first_high_frame "$map")"
  [ -n "$number" ] || { echo "tour: no octave error in $map" >&2; return 1; }
  cp "$map" "$pictures/before.frq"
  xdotool windowfocus "$editor"
  click_editor 50 60 # the frame list, so that the keys below go to the editor
  for step in 1 2 3 4 5 6 7 8; do xdotool key --clearmodifiers ctrl+Down; settle; done
  click_editor 50 60
  xdotool key Home
  xdotool key --delay 5 --repeat "$number" Down
  shoot syllable-before
  local half
  half=$(awk -v f="$frequency" 'BEGIN { printf "%.8f", f / 2 }')
  click_editor 146 30
  settle
  xdotool key End
  xdotool key --delay 5 --repeat 16 BackSpace
  xdotool type "$half"
  xdotool key alt+t
  shoot frame-corrected
  xdotool key --clearmodifiers ctrl+s
  shoot saved
  echo "Frame $number of か: $frequency Hz to $half Hz; bytes of its map that differ now:"
  cmp -l "$pictures/before.frq" "$map" | awk '{ printf "  offset %d", $1 - 1 } END { print "" }' || true
  echo "Its frequency stands at offset $((40 + 16 * number)), 8 bytes"
}
