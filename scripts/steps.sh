# Sourced after screen.sh: single steps that a user does with the program, and what its files hold afterwards.
#
# The programs lie in $built. The voicebank is $bank, and before a journey goes on it may be kept in $pictures/before to
# compare with. $row is the syllable in view.

question='^(Marlit|マーリット)$' # once a voicebank is open, the editor's own title is longer
creating='^(Creating Frequency Maps|周波数表を作成しています)$'

# within SECONDS COMMAND...: waits until it succeeds.
within() {
  local end=$((SECONDS + $1))
  shift
  until "$@"; do
    [ "$SECONDS" -lt "$end" ] || { echo "not in time: $*" >&2; return 1; }
    sleep 0.2
  done
}

make_bank() { wine "$built/make-samplebank.exe" "$(winepath -w "$bank")"; }

# open_program [PATH]: comes back when both windows stand.
open_program() {
  local argument=()
  [ $# = 0 ] || argument=("$(winepath -w "$1")")
  wine "$built/marlit.exe" "${argument[@]}" &
  program=$!
  find_window '(Marlit|マーリット)$'
  editor=$window
  find_window '^(Files|原音一覧)$'
  settle
  measure_editor
  row=0
}

has_ended() { ! kill -0 "$program" 2>/dev/null; }
is_open() { xdotool search --onlyvisible --name "$1" >/dev/null 2>&1; }
is_closed() { ! is_open "$1"; }
goes_on() { ! has_ended && is_closed "$question"; }

# ends_well: the program, by itself, and says that all went well.
ends_well() { within 30 has_ended && wait "$program"; }

keys() { xdotool key --clearmodifiers --delay 40 "$@"; }

# menu KEYS...: those behind F10.
menu() {
  to_editor
  keys F10
  settle
  keys "$@"
}

# Into a box whose old text goes.
type_over() {
  keys Home shift+End BackSpace
  xdotool type --delay 10 "$1"
}

# choose_by_option RESAMPLER [WORKERS]: its picture is taken before OK.
choose_by_option() {
  menu t o
  find_window '^(Option|オプション)$'
  settle
  keys alt+r
  type_over "$(winepath -w "$1")"
  if [ $# -gt 1 ]; then
    keys alt+m
    type_over "$2"
  fi
  shoot option "Tool, Option: typed the path of $(basename "$1")${2:+ and $2 workers}"
  keys Return
  within 10 is_closed '^(Option|オプション)$'
  settle
}

wait_for_job() {
  settle # it comes up within the first
  within 180 is_closed "$creating"
  settle
}

# go_to ROW: of the list, by Ctrl with the arrow keys.
go_to() {
  to_editor
  click_editor 50 60
  while [ "$row" != "$1" ]; do
    if [ "$row" -lt "$1" ]; then keys ctrl+Down; row=$((row + 1)); else keys ctrl+Up; row=$((row - 1)); fi
  done
  settle
}

# select_frame NUMBER [MORE]: of the syllable in view, and as many behind it.
select_frame() {
  to_editor
  click_editor 50 60
  keys Home
  [ "$1" = 0 ] || xdotool key --delay 8 --repeat "$1" Down
  [ $# = 1 ] || xdotool key --delay 8 --repeat "$2" shift+Down
  settle
}

# set_frame NUMBER HZ
set_frame() {
  select_frame "$1"
  click_editor 146 30
  keys End
  xdotool key --delay 8 --repeat 16 BackSpace
  xdotool type --delay 10 "$2"
  keys alt+t
  settle
}

map_of() { printf '%s_wav.frq' "${1%.wav}"; }
frame_of() { od -A n -v -t f8 -j $((40 + 16 * $2)) -N 8 "$1" | tr -d ' '; }
frame_is() { awk -v is="$(frame_of "$1" "$2")" -v hz="$3" 'BEGIN { exit !(is == hz) }'; }
is_larger() { [ -e "$1" ] && [ "$(wc -c <"$1")" -gt "$2" ]; }

# every_wave_has_a_map FOLDER: one with frames.
every_wave_has_a_map() {
  local wave found=0
  while read -r wave; do
    found=1
    is_larger "$(map_of "$wave")" 56 || return 1
  done < <(find "$1" -name '*.wav')
  [ "$found" = 1 ]
}

# keep: what a journey finds, to compare with.
keep() {
  rm -rf "$pictures/before"
  cp -r "$bank" "$pictures/before"
}

# changed_files: those that differ from what was kept, or are new, or have gone; by their names in the voicebank.
changed_files() {
  local file
  (cd "$bank" && find . -type f && cd "$pictures/before" && find . -type f) | LC_ALL=C sort -u | while read -r file; do
    cmp -s "$bank/$file" "$pictures/before/$file" || printf '%s ' "${file#./}"
  done
}

# only_these_changed [FILE...]: no others, and all of them.
only_these_changed() {
  local changed
  changed=$(changed_files)
  [ "$changed" = "${*:+$* }" ] || { echo "      changed: $changed"; return 1; }
}

# only_frames_changed MAP FIRST LAST: every byte that differs from the kept map is one of their frequencies.
only_frames_changed() {
  [ "$(wc -c <"$bank/$1")" = "$(wc -c <"$pictures/before/$1")" ] || return 1
  { cmp -l "$bank/$1" "$pictures/before/$1" || true; } | awk -v first="$2" -v last="$3" '
    { at = $1 - 41; frame = int(at / 16); if (at < 0 || at % 16 > 7 || frame < first || frame > last) bad = 1 }
    END { exit bad || NR == 0 }'
}

# scale_frames MAP FIRST COUNT FACTOR
scale_frames() {
  perl -e '
    my ($path, $first, $count, $factor) = @ARGV;
    open my $map, "+<:raw", $path or die "$path: $!";
    for my $frame ($first .. $first + $count - 1) {
      seek $map, 40 + 16 * $frame, 0;
      read($map, my $bytes, 8) == 8 or die "$path ends before frame $frame";
      seek $map, -8, 1;
      print $map pack "d<", $factor * unpack "d<", $bytes;
    }' "$@"
}
