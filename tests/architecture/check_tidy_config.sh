#!/usr/bin/env bash
# A lint configuration with a slip in it is silent: the checks it meant are simply off. This one is held against what
# clang-tidy itself reports as enabled: each check or family that is named must be on, each that is excluded off.
#
#   check_tidy_config.sh <clang-tidy> <configuration>
set -euo pipefail

tidy=$1
config=$(realpath "$2")
enabled=$("$tidy" --list-checks --config-file="$config" | sed -n 's/^ *\([a-z][A-Za-z0-9.-]*\)$/\1/p')
[[ -n $enabled ]] || {
  echo "clang-tidy enables no check at all"
  exit 1
}

status=0
complain() {
  echo "$1"
  status=1
}

mapfile -t named < <(sed -n '/^Checks:/,/^[A-Z][A-Za-z]*:/p' "$config" | sed '1d; /^[A-Z]/d; s/[ ,]//g')
((${#named[@]} > 1)) || complain "the configuration names no checks"
for entry in "${named[@]}"; do
  [[ $entry == '-*' ]] && continue
  pattern=${entry#-}
  matches=0
  while IFS= read -r check; do
    # shellcheck disable=SC2053 # the entry is a pattern
    [[ $check == $pattern ]] && matches=$((matches + 1))
  done <<<"$enabled"
  if [[ $entry == -* ]]; then
    ((matches == 0)) || complain "$pattern is excluded, and yet on"
    "$tidy" --list-checks --checks="-*,$pattern" --config='{}' | grep -q "^ *${pattern%\*}" ||
      complain "$pattern is excluded, but clang-tidy knows no such check"
  else
    ((matches > 0)) || complain "$entry is named, but nothing of it is on"
  fi
done

# Options of checks that are off or misspelt are ignored without a word.
while IFS= read -r check; do
  grep -qxF "$check" <<<"$enabled" || complain "there is an option for $check, which is off"
done < <(sed -n "s/^ *- key: *'\{0,1\}\([A-Za-z0-9-]*\)\..*/\1/p" "$config")
exit "$status"
