#!/usr/bin/env bash
# From a word in a file to every place that has it, and from there into a file with the word selected.
#
#   find_reference.sh <program> <artefact folder>
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"
# shellcheck source=tests/journeys/document.sh
. "$here/document.sh"

# Files are bytes here, whatever they stand for.
export LC_ALL=C

word=AmberfoldPikeman

# first_row_of <area> <colour>: the first row of the area that has the colour.
first_row_of() {
  local width
  IFS=, read -r _ _ width _ <<<"$1"
  pixels "$window" "$1" | awk -v width="$width" -v colour=" ${2:0:2} ${2:2:2} ${2:4:2}" '
    $0 == colour && !found { print int((NR - 1) / width); found = 1 }
    END { exit !found }'
}

# Hits as the search counts them: those that cross the end of a block of 1024 bytes are none.
hits_in() {
  grep -iabo -F -e "$word" "$1" | awk -F: -v length_="${#word}" 'int($1 / 1024) == int(($1 + length_ - 1) / 1024) { print $1 }'
}

program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"
file=$folder/Data/Army/AmberfoldArmy.ini
cp "$file" "$artefacts/original.ini"
start_display 1280x800x24
open_main_window 1200 700
open_coloured_file 1
origin=$(text_origin)
read -r text_x text_y <<<"$origin"

say "The right button on a word opens the pop-up menu, and its last entry starts the search"
header=$(first_row_of "$text_x,$text_y,40,200" "$keyword_colour")
# Nothing but the ground lies right of the editor. The search window will be there; the caret that blinks in it is below.
beside_top=$((text_y - 84))
beside="520,$beside_top,480,220"
pixels "$window" "$beside" >"$artefacts/beside_before"
visible_windows >"$artefacts/windows"
xdotool mousemove --window "$window" "$((text_x + 110))" "$((text_y + header + 4))" click 3
wait_for 10 "pop-up menu" new_window "$artefacts/windows" >/dev/null
press_key r
wait_for 10 "end of the pop-up menu" no_new_window "$artefacts/windows"
wait_for 10 "search window" changed_rows "$window" "$beside" "$artefacts/beside_before" >/dev/null
settled snapshot "$window" "$beside"
screenshot "$artefacts/1-hits.png"
read -r left _ <<<"$(changed_columns "$window" "$beside" "$artefacts/beside_before")"
read -r top _ <<<"$(changed_rows "$window" "$beside" "$artefacts/beside_before")"

say "A double-click on the second hit opens its file with the word selected"
look=$(snapshot "$window" "$text_x,$text_y,300,200")
text_differs_from() { [[ $(snapshot "$window" "$text_x,$text_y,300,200") != "$1" ]]; }
# Below the title bar of 24 pixels the list begins, and its lines are 12 pixels high.
double_click "$window" "$((520 + left + 20))" "$((beside_top + top + 43))"
wait_for 20 "other text" text_differs_from "$look"
wait_for 20 "highlighted comments" has_colour "$window" "$documents" "$comment_colour" 1000
settled comment_lengths "$window"
screenshot "$artefacts/2-hit.png"
wait_for 10 "selected word" has_colour "$window" "$documents" "$selection_colour" 300

say "What is typed takes the place of the selected word"
xdotool type --delay 12 Zq
place=$(hits_in "$artefacts/original.ini" | sed -n 2p)
{
  head -c "$place" "$artefacts/original.ini"
  printf Zq
  tail -c +"$((place + ${#word} + 1))" "$artefacts/original.ini"
} >"$artefacts/expected_whole.ini"
cut_behind_last_end "$artefacts/expected_whole.ini" >"$artefacts/expected.ini"
saved_is "$artefacts/expected.ini" "what was typed over the second hit"
end_program "$window" || fail "the program ended with $?"
say "Done"
