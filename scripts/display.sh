# Sourced after wine-prefix.sh: a virtual display, which goes with the script.

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
