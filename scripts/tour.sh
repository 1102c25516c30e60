# Sourced by ./run where there is no display: the main job, done by mouse and keys on a virtual one.
#
# tour LANGUAGE PROGRAM MAKER [PATH]   opens PATH and shows it; without PATH, opens a copy of the sample voicebank, takes
# an octave error out of one frame, saves, creates the missing maps and visits the other windows. Screenshots are numbered in build/tour/LANGUAGE/.

. "$root/scripts/screen.sh"

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

# The windows come up at their first size and place and with the first view, which the clicks below count on.
forget_view() {
  local value
  for value in EditorDlg FileListDlg FrqCtrlViewMode FrqCtrlZoom; do
    wine reg delete "$settings" /v "$value" /f >/dev/null 2>&1 || true
  done
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
