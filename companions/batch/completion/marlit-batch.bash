# Bash completion of marlit-batch: its commands, the options of each, and what these take.
#
# Needs bash and sed. Names of folders and files are left to readline, which knows how to quote them: nothing is offered
# for them here, and "dirnames" or "default" steps in.

_marlit_batch_options() {
  local every="-h --help -r --recursive --only --json -j --jobs" writing="-n --dry-run --no-keep"
  local settings="--note --transition --begin --end --min-frames"
  case $1 in
    list) echo "$every -k --kind" ;;
    check) echo "$every $writing -k --kind $settings --fix" ;;
    create) echo "$every $writing -k --kind --all --missing --resampler" ;;
    convert) echo "$every $writing --from --to" ;;
    shift) echo "$every $writing -k --kind --cents" ;;
    key) echo "$every $writing -k --kind --from-curve" ;;
    report) echo "$every -k --kind $settings -o --output --language" ;;
    export) echo "$every -n --dry-run -k --kind --format -o --output" ;;
    import) echo "$every $writing -k --kind --format -o --output" ;;
    restore) echo "-h --help --json -n --dry-run --list --run" ;;
  esac
}

# The words that option $2 of command $1 takes for its value. Fails where that is no word of a list.
_marlit_batch_values() {
  local kinds
  case $2 in
    -k | --kind | --from | --to)
      # The program says which there are. The last one is listed, and nothing else is done to it.
      kinds=$("${COMP_WORDS[0]/#\~/$HOME}" list --help 2>/dev/null | sed -n 's/.*maps of this kind alone: //p')
      kinds=${kinds//,/}
      if [ "$1" = list ]; then echo "${kinds/ or / }"; else echo "${kinds% or *}"; fi ;;
    --note) echo {C,C#,D,D#,E,F,F#,G,G#,A,A#,B}{1..7} ;;
    --format) echo csv pitchtier ;;
    --language) echo en ja ;;
    *) return 1 ;;
  esac
}

_marlit_batch() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words
  local command=
  # --kind=frq comes as three words.
  if [ "$current" = "=" ]; then
    current=
  elif [ "$previous" = "=" ]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  COMPREPLY=()
  if [ "$COMP_CWORD" -gt 1 ]; then command=${COMP_WORDS[1]}; fi

  if [ -z "$command" ]; then
    words="list check create convert shift key report export import restore -h --help --version"
  elif words=$(_marlit_batch_values "$command" "$previous"); then
    :
  else
    case $command,$previous in
      *,-j | *,--jobs | *,--only | *,--min-frames | *,--cents | *,--run)
        compopt +o dirnames
        return ;;
      report,-o | report,--output | *,--resampler)
        compopt +o dirnames -o default
        return ;;
      *,-o | *,--output) return ;;
    esac
    if [[ $current != -* ]]; then return; fi
    words=$(_marlit_batch_options "$command")
  fi
  compopt +o dirnames
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -o dirnames -F _marlit_batch marlit-batch
