#!/usr/bin/env bash
# An entry added to the jump list takes effect in an editor that is open already, at its next choice of a block.
#
#   jump_entry.sh <program> <artefact folder>
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

program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"
file=$folder/Data/Army/AmberfoldArmy.ini
cp "$file" "$artefacts/original.ini"
whole=$artefacts/original.ini
start_display 1280x800x24
open_main_window 1000 600
bar=$(bar_area "$window" "$(tree_top "$window")")
pixels "$window" "$bar" >"$artefacts/bar_empty"
open_coloured_file 1
read -r button_from button_to <<<"$(changed_columns "$window" "$bar" "$artefacts/bar_empty")"
IFS=, read -r _ bar_row _ <<<"$bar"

press_bar_button() { click "$window" "$(((button_from + button_to) / 2))" "$((bar_row + 9))"; }

look_of_documents() { snapshot "$window" "$documents"; }

documents_differ_from() { [[ $(look_of_documents) != "$1" ]]; }

say "Put away, the editor leaves the menus to the main window; View > Options opens the jump list editor"
press_bar_button
wait_for 10 "empty documents area" lacks_colour "$window" "$documents" "$comment_colour"
settled look_of_documents
look=$(look_of_documents)
press_key alt+v o
wait_for 10 "jump list editor" documents_differ_from "$look"
settled snapshot "$window" "0,0,180,250" # without the text box, in which a caret blinks
type_text "IconPicture"
press_key Return
screenshot "$artefacts/1-options.png"
cp "$folder/jumps.lst" "$artefacts/expected.lst"
printf 'IconPicture\r\n' >>"$artefacts/expected.lst"
press_key ctrl+w
confirm "the saved jump list"
cmp "$folder/jumps.lst" "$artefacts/expected.lst" || fail "the jump list is not what was there and the new entry"

say "The editor, brought back, jumps to the new entry's place in the block that is chosen next"
press_bar_button
wait_for 10 "coloured text" has_colour "$window" "$documents" "$comment_colour" 2000
settled comment_lengths "$window"
origin=$(text_origin)
read -r text_x text_y <<<"$origin"
choose_entry "$((text_x + 600))" "$((text_y - 10))" "blocks" End
settled comment_lengths "$window"
choose_entry "$((text_x + 100))" "$((text_y - 10))" "settings" End
screenshot "$artefacts/2-jumped.png"
type_text "Zq"
block=$(sed -n 's/^Object \([A-Za-z]*\)\r$/\1/p' "$whole" | sort -f | tail -n 1)
place=$(place_of IconPicture "$(header_place "$block")")
[[ -n $place ]] || fail "the block $block has no such setting"
cut_behind_last_end "$whole" >"$artefacts/expected_before.ini"
with_inserted "$artefacts/expected_before.ini" "$((place + 1))" "Zq" >"$artefacts/expected.ini"
saved_is "$artefacts/expected.ini" "what was typed at the setting"
end_program "$window" || fail "the program ended with $?"
say "Done"
