# shellcheck shell=bash
# shellcheck disable=SC2154 # names shared with the scripts that source this
# What a hand does in an open document, and what must be in its file then. Sourced after main_window.sh.
#
#   file     the document's file, on the disk
#   whole    a file that holds what the whole text should be

# choose_entry <x> <y> <what> <key...>: opens the drop-down list at that place and takes the entry the keys lead to.
choose_entry() {
  local x=$1 y=$2 what=$3
  shift 3
  visible_windows >"$artefacts/windows"
  click "$window" "$x" "$y"
  wait_for 10 "drop-down list of $what" new_window "$artefacts/windows" >/dev/null
  press_key "$@" Return
  wait_for 10 "end of the drop-down list of $what" no_new_window "$artefacts/windows"
}

type_text() { xdotool type --delay 12 -- "$1"; }

# What is written ends with the character behind the text's last "end".
cut_behind_last_end() {
  local end
  end=$(grep -iabo end "$1" | tail -n 1 | cut -d: -f1)
  head -c "$((end + 4))" "$1"
}

# with_inserted <file> <offset> <text>
with_inserted() {
  head -c "$2" "$1"
  printf '%s' "$3"
  tail -c +"$(($2 + 1))" "$1"
}

# saved_is <file> <what>: saves, and waits for a file that equals the expected one byte by byte.
saved_is() {
  press_key ctrl+s
  wait_for 15 "saved file with $2 (expected $1, saved $file)" cmp -s "$1" "$file"
}

# place_of <text> <offset>: where in the expected file it comes first at or after the offset; nothing if nowhere.
place_of() { grep -iabo -F -e "$1" "$whole" | awk -F: -v from="$2" '$1 >= from && !found { print $1; found = 1 }'; }

header_place() { grep -abo -e "^Object $1"$'\r' "$whole" | cut -d: -f1; }

next_header_place() {
  grep -abo -e '^Object ' "$whole" | awk -F: -v from="$1" '$1 > from && !found { print $1; found = 1 }'
}
