#!/usr/bin/env bash
# A first run: no list files, so the program asks for directories; one is added by clicking through the folders.
#
#   first_run.sh <program> <artefact folder>
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"

# Inside the editor's windows and lists: where its design puts them.
folder_list=9,65,140,138
directory_list=185,65,130,130
selection_colour=308cc6

look_of_directories() { snapshot "$editor" "$directory_list"; }

directories_differ_from() { [[ $(look_of_directories) != "$1" ]]; }

look_of_folders() { snapshot "$editor" "$folder_list"; }

# Other lines are there: more has changed than the one under the pointer.
has_walked() {
  local first last
  read -r first last <<<"$(changed_rows "$editor" "$folder_list" "$artefacts/folders_before")"
  ((${last:-0} - ${first:-0} >= 30))
}

# walk_down <n>: double-clicks the n-th folder inside the current one. The current folder's line is the selected one;
# each key press selects the next line, scrolling the list where it must, and the selected line is told by its colour.
walk_down() {
  local n=$1 first last
  for ((; n > 0; n--)); do
    pixels "$editor" "$folder_list" >"$artefacts/folders_before"
    press_key Down
    wait_for 5 "selected folder" changed_rows "$editor" "$folder_list" "$artefacts/folders_before" >/dev/null
    settled look_of_folders
  done
  pixels "$editor" "$folder_list" >"$artefacts/folders_before"
  read -r first last <<<"$(rows_of_colour "$editor" "$folder_list" "$selection_colour")"
  [[ -n ${last:-} ]] || fail "no folder is selected"
  double_click "$editor" 70 "$((65 + (first + last) / 2))"
  wait_for 10 "folder walked into" has_walked
  settled look_of_folders
}

program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"
rm "$folder/Dirs.lst" "$folder/jumps.lst"
# The folder list begins at home.
export HOME=$folder

say "Without a directory list the directory editor comes by itself, and the main window has no tree"
start_display 1280x800x24
start_program "$folder/${program##*/}"
wait_for 30 "directory editor" window_named '^Add Directorys$' >/dev/null
editor=$(window_named '^Add Directorys$')
wait_for 30 "main window" window_named '^Project$' >/dev/null
window=$(window_named '^Project$')
has_size "$editor" "328 259" || fail "the directory editor is $(window_size "$editor")"
resize_window "$window" 1000 600
tree_is_gone "$window" || fail "there is a tree without directories"

say "A message box opens above the directory editor, which lies above all other windows"
xdotool windowactivate --sync "$window"
press_key alt+a
wait_for 10 "message box" window_named '^Blockhouse$' >/dev/null
box=$(window_named '^Blockhouse$')
wait_for 10 "message box above the directory editor" lies_above "$box" "$editor"
lies_above "$editor" "$window" || fail "the directory editor lies below the main window"
confirm "the program"

say "Two steps down and a click on Add put a directory into the list"
xdotool windowactivate --sync "$editor"
click "$editor" 70 200 # below the lines, or on the last of them
press_key Home
settled look_of_folders
steps=$(tr -cd / <<<"$folder" | wc -c)
for ((; steps > 0; steps--)); do press_key Down; done # the way from the root to the home folder
settled look_of_folders
walk_down 1 # Data
walk_down 1 # Army
before=$(look_of_directories)
screenshot "$artefacts/1-walked.png" "$editor"
click "$editor" 36 236
wait_for 10 "entry in the list" directories_differ_from "$before"
screenshot "$artefacts/2-added.png" "$editor"
[[ ! -e $folder/Dirs.lst ]] || fail "the list was written before the window closed"

say "Closed, it writes the list and fills the tree"
xdotool windowactivate --sync "$editor" key alt+F4
confirm "the saved list"
printf '%s\r\n' "$folder/Data/Army" >"$artefacts/expected.lst"
cmp "$folder/Dirs.lst" "$artefacts/expected.lst" || fail "the list holds $(cat "$folder/Dirs.lst")"
wait_for 10 "directory tree" tree_shows "$window"
wait_for 10 "end of the directory editor" no_window_named '^Add Directorys$'
settled snapshot "$window" "0,0,1000,600"
documents=$(documents_area "$window")
open_coloured_file 1
screenshot "$artefacts/3-first-file.png"
end_program "$window" || fail "the program ended with $?"
say "Done"
