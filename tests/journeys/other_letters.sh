#!/usr/bin/env bash
# A folder and a file whose names are in no single code page: added to the list by its path from the clipboard, listed,
# opened, saved, found by the search, and still in the list when the program is started again.
#
#   other_letters.sh <program> <artefact folder>
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"
# shellcheck source=tests/journeys/document.sh
. "$here/document.sh"


look_of_directories() { snapshot "$directories" "0,0,320,258"; }

directories_differ_from() { [[ $(look_of_directories) != "$1" ]]; }

# Beside the editor, where the search window comes; a caret may blink in either.
look_beside() { snapshot "$window" "490,340,280,140"; }

looks_other_beside_than() { [[ $(look_beside) != "$1" ]]; }

look_of_bar() { snapshot "$window" "$bar"; }

bar_differs_from() { [[ $(look_of_bar) != "$1" ]]; }

program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"
odd="$folder/Dä Ж"
file="$odd/Panzer ü Ж.ini"
mkdir "$odd"
sed 's/AmberfoldPikeman/Oddlettered/' "$folder/Data/Army/AmberfoldArmy.ini" >"$file"
cp "$file" "$artefacts/original.ini"
rm "$folder/Dirs.lst"
start_display 1280x800x24

say "Without a list the directory editor comes, and takes a path from the clipboard"
start_program "$folder/${program##*/}"
wait_for 30 "directory editor" window_named '^Add Directorys$' >/dev/null
directories=$(window_named '^Add Directorys$')
settled look_of_directories
look=$(look_of_directories)
printf '%s' "$odd" | xclip -selection clipboard
xdotool windowactivate --sync "$directories"
press_key ctrl+v
wait_for 10 "folder of the path" directories_differ_from "$look"
press_key alt+a
settled look_of_directories
screenshot "$artefacts/1-added.png" "$directories"
xdotool windowactivate --sync "$directories" key alt+F4
confirm "the saved directories"
window=$(window_named '^Project$')
resize_window "$window" 1000 600
wait_for 10 "directory tree" tree_shows "$window"
documents=$(documents_area "$window")
end_program "$window" || fail "the program ended with $?"

say "Started again, it lists the folder; the file opens and is saved"
open_main_window 1000 600
open_coloured_file 1
screenshot "$artefacts/2-opened.png"
read -r text_x text_y <<<"$(text_origin)"
click "$window" "$((text_x + 200))" "$((text_y + 100))"
press_key ctrl+Home
type_text "Zq"
export LC_ALL=C
with_inserted "$artefacts/original.ini" 0 "Zq" >"$artefacts/expected_whole.ini"
cut_behind_last_end "$artefacts/expected_whole.ini" >"$artefacts/expected.ini"
saved_is "$artefacts/expected.ini" "what was typed at the file's start"

say "The search finds it there"
bar=$(bar_area "$window" "$(tree_top "$window")")
settled look_beside
look=$(look_beside)
press_key ctrl+shift+f
wait_for 10 "search window" looks_other_beside_than "$look"
type_text "Oddlettered"
press_key Return
settled look_beside
screenshot "$artefacts/3-found.png"
settled look_of_bar
look=$(look_of_bar)
press_key shift+Tab Home Return
wait_for 10 "button of the hit's window" bar_differs_from "$look"
wait_for 10 "selected hit" has_colour "$window" "$documents" "$selection_colour" 300
screenshot "$artefacts/4-hit.png"
type_text "Zq"
place=$(grep -abo Oddlettered "$artefacts/expected_whole.ini" | head -n 1 | cut -d: -f1)
sed '0,/Oddlettered/s///' "$artefacts/expected_whole.ini" >"$artefacts/without_hit.ini"
with_inserted "$artefacts/without_hit.ini" "$place" "Zq" >"$artefacts/expected_hit_whole.ini"
cut_behind_last_end "$artefacts/expected_hit_whole.ini" >"$artefacts/expected_hit.ini"
saved_is "$artefacts/expected_hit.ini" "what was typed over the hit"
end_program "$window" || fail "the program ended with $?"
say "Done"
