#!/usr/bin/env bash
# From the tree into the placement editor: a structure is dragged to another place, also out of the canvas, and saved.
#
#   place_structures.sh <program> <artefact folder>
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"

# Files are bytes here, whatever they stand for.
export LC_ALL=C

# Inside the placement editor: the canvas begins 8 pixels from the left, and its border of 2 pixels is no part of it.
canvas_left=10
area_of_canvas=12,70,300,290

# black_mark: "x y" in the window of the black mark's first pixel. Letters may be black too, but nowhere so wide.
black_mark() {
  local x y width
  IFS=, read -r x y width _ <<<"$area_of_canvas"
  pixels "$editor" "$area_of_canvas" | awk -v x="$x" -v y="$y" -v width="$width" '
    { column = (NR - 1) % width; run = $0 == " 00 00 00" && column > 0 ? run + 1 : 0 }
    run == 6 && !found { print x + column - 5, y + int((NR - 1) / width); found = 1 }
    END { exit !found }'
}

# units <pixels>: canvas units with two decimals; a pixel is 15 twips, a unit 4.635.
units() { awk -v pixels="$1" 'BEGIN { printf "%.2f", pixels * 15 / 4.635 }'; }

# point <x> <y>: moves the pointer to a place of the canvas, or beyond its edges.
point() { xdotool mousemove --window "$editor" -- "$((canvas_left + $1))" "$((canvas_top + $2))"; }

# drag <x> <y> <to x> <to y>: in pixels of the canvas.
drag() {
  point "$1" "$2"
  xdotool mousedown 1
  point "$((($1 + $3) / 2))" "$((($2 + $4) / 2))"
  point "$3" "$4"
  settled snapshot "$editor" "$area_of_canvas"
}

look_of_strip() { snapshot "$editor" "2,$((height - 19)),200,16"; }

strip_differs_from() { [[ $(look_of_strip) != "$1" ]]; }

mark_is_at() { [[ $(black_mark) == "$1" ]]; }

mark_is_elsewhere() { ! mark_is_at "$1"; }

close_placement() {
  xdotool windowactivate --sync "$editor" key alt+F4
  wait_for 10 "end of the placement editor" no_window_named '^[/\]aidata.ini$'
}

# saves_with_location <location line>: saves, and expects that line in the place of the first one and nothing else new.
saves_with_location() {
  sed "0,/Location = X:[^\r]*/s//$1/" "$artefacts/original.ini" >"$artefacts/expected.ini"
  ! cmp -s "$artefacts/expected.ini" "$file" || fail "the file was written before it was saved"
  xdotool windowactivate --sync "$editor" key ctrl+s
  wait_for 10 "file with $1" cmp -s "$artefacts/expected.ini" "$file"
}

program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"
file=$folder/Data/Skirmish/aidata.ini
cp "$file" "$artefacts/original.ini"
printf '%s\r\n' "$folder/Data/Skirmish" >"$folder/Dirs.lst"
start_display 1280x800x24
open_main_window 700 500

say "A double-click on the file asks which editor is meant; Yes opens the placement editor"
open_tree_file "$window" 1
confirm "the placement editor"
wait_for 10 "placement editor" window_named '^[/\]aidata.ini$' >/dev/null
editor=$(window_named '^[/\]aidata.ini$')
xdotool windowmove --sync "$editor" 400 250
read -r width height <<<"$(window_size "$editor")"
settled snapshot "$editor" "0,0,$width,$height"

say "The chosen side's structures lie where the file says"
visible_windows >"$artefacts/windows"
click "$editor" 60 38
wait_for 10 "list of sides" new_window "$artefacts/windows" >/dev/null
press_key Home Return
wait_for 10 "end of the list of sides" no_new_window "$artefacts/windows"
# The headquarters alone is black, and stands at 512, 300.25. Its outline is a pixel of another colour.
wait_for 10 "black mark" black_mark >/dev/null
settled snapshot "$editor" "$area_of_canvas"
screenshot "$artefacts/1-side.png" "$editor"
read -r x y <<<"$(black_mark)"
canvas_top=$((y - 1 - 93))
((x - 1 == canvas_left + 158)) || fail "the mark is at $x, not at $((canvas_left + 159))"

say "A drag takes the mark along, the strip shows where, and the log what was written"
strip=$(look_of_strip)
drag 162 97 200 155
strip_differs_from "$strip" || fail "the strip shows no coordinates"
mark_is_at "$((canvas_left + 201)) $((canvas_top + 156))" || fail "the mark is at $(black_mark), not where the pointer is"
screenshot "$artefacts/2-dragged.png" "$editor"
xdotool mouseup 1
saves_with_location "Location = X:$(units 200) Y:$(units 155)"
before=$(count_colour "$editor" "80,80,370,200" ffffff)
xdotool windowactivate --sync "$editor"
press_key alt+v l
wait_for 10 "log" has_colour "$editor" "80,80,370,200" ffffff "$((before + 30000))"
settled snapshot "$editor" "80,80,370,100"
screenshot "$artefacts/3-log.png" "$editor"
click "$editor" 464 "$((canvas_top + 23))"
wait_for 10 "canvas again" black_mark >/dev/null

say "The pointer may leave the canvas"
drag 203 158 -30 120
xdotool mouseup 1
saves_with_location "Location = X:$(units -30) Y:$(units 120)"
screenshot "$artefacts/4-outside.png" "$editor"

say "A drop is taken back"
press_key ctrl+z
wait_for 10 "mark where it was" mark_is_at "$((canvas_left + 201)) $((canvas_top + 156))"
saves_with_location "Location = X:$(units 200) Y:$(units 155)"

say "A drop that no file holds comes back after its window was closed"
press_key ctrl+y
wait_for 10 "mark gone again" mark_is_elsewhere "$((canvas_left + 201)) $((canvas_top + 156))"
close_placement
xdotool windowactivate --sync "$window"
press_key ctrl+shift+t
wait_for 10 "placement editor again" window_named '^[/\]aidata.ini$' >/dev/null
editor=$(window_named '^[/\]aidata.ini$')
wait_for 10 "its first picture" snapshot "$editor" "0,0,60,40"
screenshot "$artefacts/5-back.png" "$editor"
saves_with_location "Location = X:$(units -30) Y:$(units 120)"

say "No opens the file as text"
close_placement
xdotool windowactivate --sync "$window"
press_key Return # the file is still the selected one
wait_for 10 "question" window_named '^Blockhouse$' >/dev/null
box=$(window_named '^Blockhouse$')
settled snapshot "$box" "0,0,60,40"
xdotool windowactivate --sync "$box"
press_key alt+n
wait_for 10 "highlighted comments" has_colour "$window" "$documents" "$comment_colour" 1000
end_program "$window" || fail "the program ended with $?"
say "Done"
