# Sourced after wine-prefix.sh: a virtual display, and the program on it by mouse and keys.
#
# Screenshots go into $pictures, numbered by $shot_number. The editor's window is $editor.

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

# The first visible window with such a title, as $window; gives up after half a minute.
find_window() {
  local attempt
  for attempt in $(seq 150); do
    window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1) || true
    [ -n "$window" ] && return 0
    sleep 0.2
  done
  echo "no window named $1" >&2
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

# shoot NAME [TEXT]: the screen when it has come to rest, and a line about it.
shoot() {
  settle
  shot_number=$((shot_number + 1))
  local picture
  picture=$pictures/$(printf '%02d' "$shot_number")-$1.png
  import -window root "$picture"
  echo "  $(basename "$picture")${2:+  $2}"
}

# A place in the editor is told in its dialog units. The window is measured before it is sized: its client area
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
  point_at "$1" "$2"
  xdotool click 1
}

point_at() {
  local x y
  x=$(awk -v o="$origin_x" -v u="$unit_x" -v at="$1" 'BEGIN { printf "%d", o + u * at }')
  y=$(awk -v o="$origin_y" -v u="$unit_y" -v at="$2" 'BEGIN { printf "%d", o + u * at }')
  xdotool mousemove --window "$editor" "$x" "$y"
}

# By its caption, whatever other window was in front.
to_editor() {
  xdotool mousemove --window "$editor" 200 10 click 1
  settle
}
