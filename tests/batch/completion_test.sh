#!/usr/bin/env bash
# completion_test.sh COMPLETION PROGRAM   what bash offers behind PROGRAM, against what PROGRAM says and takes itself.
set -uo pipefail
program=$2
. "$1" || exit 1
compopt() { :; } # is for a line that is being typed
failed=0
# WHAT WANTED GOT, as words in any order.
same() {
  local wanted got
  wanted=$(tr -s ' ' '\n' <<<"$2" | sort) got=$(tr -s ' ' '\n' <<<"$3" | sort)
  [ "$wanted" = "$got" ] || { echo "$1 offers"; diff <(echo "$wanted") <(echo "$got"); failed=1; }
}
offered() {
  COMP_WORDS=(marlit-batch "$@") COMP_CWORD=$#
  _marlit_batch
  echo "${COMPREPLY[*]}"
}
options_in() { sed -n 's/^  \(-[^ ]*\).*/\1/p' | tr '\n,' '  ' | sed 's/ *$//'; }

help=$("$program" --help)
commands=$(sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p' <<<"$help" | tr '\n' ' ' | sed 's/ *$//')
same "no command" "$commands $(options_in <<<"$help")" "$(offered '')"
for command in $commands; do
  same "$command" "$("$program" "$command" --help | options_in)" "$(offered "$command" -)"
done

# Values are taken: a call with one is no wrong one, but for a folder that is not there.
for words in 'list --kind' 'create -k' 'convert --from vs4ufrq --to' 'check --note' 'report -o p --language' 'export --format'; do
  read -ra line <<<"$words"
  values=$(offered "${line[@]}" '')
  [ -n "$values" ] || { echo "$words: nothing is offered"; failed=1; }
  for value in $values; do
    "$program" "${line[@]}" "$value" /no/such/folder 2>/dev/null
    [ $? = 3 ] || { echo "$words $value is not taken"; failed=1; }
  done
done
same "an equals sign" pmk "$(offered list --kind = p)"
same "behind a folder" "" "$(offered list folder '')"
exit "$failed"
