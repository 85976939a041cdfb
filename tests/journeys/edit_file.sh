#!/usr/bin/env bash
# Typing into a file, jumping through it, finding and replacing in it, saving it: what the screen shows on the way, and
# every byte that lands on the disk.
#
#   edit_file.sh <program> <artefact folder>
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"
# shellcheck source=tests/journeys/document.sh
. "$here/document.sh"

typed_keyword_colour=0000ff
typed_comment_colour=008000

# Files are bytes here, whatever they stand for.
export LC_ALL=C

# ---- the text on the screen -----------------------------------------------------------------------------------

look_of_first_line() { snapshot "$window" "$first_line"; }

first_line_differs_from() { [[ $(look_of_first_line) != "$1" ]]; }

# A header stands at the very left, and its keyword reaches to the sixth letter. Few pixels of a letter are wholly of
# its colour.
header_is_on_top() {
  has_colour "$window" "$text_x,$text_y,12,14" "$keyword_colour" 2 &&
    has_colour "$window" "$((text_x + 36)),$text_y,14,14" "$keyword_colour" 2
}

# The text left of the find panel: the hits themselves look alike.
look_of_text() { snapshot "$window" "$((text_x + 4)),$text_y,110,250"; }

text_differs_from() { [[ $(look_of_text) != "$1" ]]; }

hit_is_on_top() { has_colour "$window" "$first_line" "$selection_colour" "$1"; }

# strip_place: "x y" of the find panel's title strip, the only large area of its colour.
strip_place() {
  local width
  IFS=, read -r _ _ width _ <<<"$documents"
  pixels "$window" "$documents" | awk -v width="$width" -v colour="$strip_colour" '
    $0 == colour { row = int((NR - 1) / width); if (!count[row]++) left[row] = (NR - 1) % width; last = row }
    END {
      for (row = 0; row <= last; row++) {
        rows = count[row] >= 100 ? rows + 1 : 0
        if (rows == 15) { print left[row], row - 14; exit 0 }
      }
      exit 1
    }'
}

strip_is_at() { [[ $(strip_place) == "$1" ]]; }

strip_has_left() {
  local place
  place=$(strip_place) && [[ $place != "$1" ]]
}

# The strip's colour is the desktop's: whatever fills it where it is to be, and not before it is there.
panel_has_opened() {
  local colour
  colour=$(pixels "$window" "$((strip_x + 20)),$((strip_y + 12)),1,1")
  [[ $colour != " ff ff ff" ]] || return 1
  strip_colour=$colour
  local x y
  read -r x y <<<"$(strip_place)"
  ((${x:-0} >= strip_x && x <= strip_x + 2 && y >= strip_y && y <= strip_y + 2))
}

panel_is_gone() { ! strip_place >/dev/null; }

# ---- the file -------------------------------------------------------------------------------------------------

# settings_of_block <start> <end>: the offsets of the jump list's entries in that part of the file, in their order.
settings_of_block() {
  local entry at
  while IFS= read -r entry; do
    at=$(place_of "${entry%$'\r'}" "$1")
    if [[ -n $at ]] && ((at < $2)); then echo "$at"; fi
  done <"$folder/jumps.lst"
}

# ---- the journey ----------------------------------------------------------------------------------------------

program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"
file=$folder/Data/Army/AmberfoldArmy.ini
cp "$file" "$artefacts/original.ini"

start_display 1280x800x24
open_main_window 1000 600
open_coloured_file 1
origin=$(text_origin)
read -r text_x text_y <<<"$origin"
# The text box begins 56 pixels below the window's inside, its text below the lists that reach into it.
inside_x=$((text_x - 4))
inside_y=$((text_y - 62))
# Without the column in which a caret may blink.
first_line="$((text_x + 4)),$text_y,100,14"
for colour in "$typed_keyword_colour" "$typed_comment_colour"; do
  lacks_colour "$window" "$documents" "$colour" || fail "there is the colour $colour before anything is typed"
done

say "What is typed is corrected and coloured"
click "$window" "$((text_x + 200))" "$((text_y + 100))"
press_key ctrl+End
type_text "object brandnewtower"
press_key Return Tab
type_text "body = x ;a note end"
press_key Return
type_text "end"
press_key Return
wait_for 10 "blue keywords" has_colour "$window" "$documents" "$typed_keyword_colour" 20
wait_for 10 "green comment" has_colour "$window" "$documents" "$typed_comment_colour" 20
screenshot "$artefacts/1-typed.png"

say "Saved, the file holds the old text and the new block up to its end"
whole=$artefacts/expected_whole.ini
{
  cat "$artefacts/original.ini"
  printf 'Object brandnewtower\r\n\tBody = x ;a note end\r\nEnd\r\n'
} >"$whole"
expected=$artefacts/expected.ini
cut_behind_last_end "$whole" >"$expected"
[[ $(tail -c 5 "$expected" | od -An -c | tr -d ' ') == '\nEnd\r' ]] ||
  fail "what is expected does not end where it should"
saved_is "$expected" "the typed block"

say "The right button opens the pop-up menu, Escape closes it"
visible_windows >"$artefacts/windows"
xdotool mousemove --window "$window" "$((text_x + 100))" "$((text_y + 80))" click 3
wait_for 10 "pop-up menu" new_window "$artefacts/windows" >/dev/null
popup=$(new_window "$artefacts/windows")
read -r popup_width popup_height <<<"$(window_size "$popup")"
((popup_width >= 60 && popup_height >= 60 && popup_height <= 200)) ||
  fail "the pop-up menu is $popup_width x $popup_height, not of the size of four entries"
screenshot "$artefacts/2-pop-up.png"
press_key Escape
wait_for 10 "end of the pop-up menu" no_new_window "$artefacts/windows"

say "The block list jumps to a header, the list beside it to a setting in that block"
press_key ctrl+End
settled look_of_first_line
look=$(look_of_first_line)
choose_entry "$((text_x + 350))" "$((text_y - 10))" "blocks" End
wait_for 10 "other first line after a block was chosen" first_line_differs_from "$look"
wait_for 10 "header line at the top of the text" header_is_on_top
screenshot "$artefacts/3-block.png"
block=$(sed -n 's/^Object \([A-Za-z]*\)\r$/\1/p' "$artefacts/original.ini" | sort -f | tail -n 1)
header=$(header_place "$block")
type_text "Zq"
with_inserted "$expected" "$header" "Zq" >"$artefacts/expected_block.ini"
saved_is "$artefacts/expected_block.ini" "what was typed before the header of $block"
press_key ctrl+z
saved_is "$expected" "nothing left of what was typed before the header of $block, after Ctrl+Z"

choose_entry "$((text_x + 350))" "$((text_y - 10))" "blocks" End
wait_for 10 "header line at the top of the text again" header_is_on_top
look=$(look_of_first_line)
choose_entry "$((text_x + 100))" "$((text_y - 10))" "settings" Home Down
wait_for 10 "other first line after a setting was chosen" first_line_differs_from "$look"
screenshot "$artefacts/4-setting.png"
setting=$(settings_of_block "$header" "$(next_header_place "$header")" | sed -n 2p)
[[ -n $setting ]] || fail "the jump list has no second entry in the block $block"
type_text "Zq"
with_inserted "$expected" "$((setting + 1))" "Zq" >"$artefacts/expected_setting.ini"
saved_is "$artefacts/expected_setting.ini" "what was typed behind the setting's first letter"
press_key ctrl+z
saved_is "$expected" "nothing left of what was typed into the setting, after Ctrl+Z"

say "The find panel finds, and goes on from what it found"
press_key ctrl+Home Down Down
settled look_of_first_line
look=$(look_of_first_line)
strip_x=$((inside_x + 128))
strip_y=$((inside_y + 56))
press_key ctrl+f
strip_colour="none yet"
wait_for 10 "find panel 128 pixels from the left and 56 from the top of the editor's inside" panel_has_opened
type_text "TRAINTIME"
press_key Return
wait_for 10 "first hit as the first line" first_line_differs_from "$look"
wait_for 10 "selected hit at the top of the text" hit_is_on_top 300
screenshot "$artefacts/5-found.png"
settled look_of_text
look=$(look_of_text)
click "$window" "$((strip_x + 130))" "$((strip_y + 119))"
wait_for 10 "other text at the top after Find Next" text_differs_from "$look"
wait_for 10 "selected next hit at the top of the text" hit_is_on_top 300

say "Replace All replaces in the whole file, and one Ctrl+Z takes it back"
sed 's/TrainTime/BuildTime/Ig' "$expected" >"$artefacts/expected_replaced.ini"
if cmp -s "$expected" "$artefacts/expected_replaced.ini"; then fail "the file has nothing to replace"; fi
click "$window" "$((strip_x + 111))" "$((strip_y + 93))"
click "$window" "$((strip_x + 110))" "$((strip_y + 67))"
type_text "BuildTime"
screenshot "$artefacts/6-replace.png"
click "$window" "$((strip_x + 130))" "$((strip_y + 145))"
saved_is "$artefacts/expected_replaced.ini" "every TrainTime replaced"
click "$window" "$((text_x + 60))" "$((text_y + 200))"
press_key ctrl+z
saved_is "$expected" "every replacement taken back by one Ctrl+Z"

say "The find panel is dragged by its title strip, and closed"
before=$(strip_place)
point_at "$window" "$((strip_x + 60))" "$((strip_y + 12))"
xdotool mousedown 1
point_at "$window" "$((strip_x + 70))" "$((strip_y + 20))"
wait_for 10 "find panel away from $before" strip_has_left "$before"
settled strip_place
held=$(strip_place)
read -r held_x held_y <<<"$held"
point_at "$window" "$((strip_x + 110))" "$((strip_y + 50))"
wait_for 10 "find panel 40 pixels to the right of $held and 30 below" strip_is_at "$((held_x + 40)) $((held_y + 30))"
screenshot "$artefacts/7-dragged.png"
xdotool mouseup 1
point_at "$window" "$((text_x + 20))" "$((text_y + 20))"
settled strip_place
strip_is_at "$((held_x + 40)) $((held_y + 30))" ||
  fail "the find panel goes on following the mouse after the button is released: it is at $(strip_place)"
press_key ctrl+f Escape
wait_for 10 "end of the find panel after Escape" panel_is_gone

say "A file that cannot be saved is told, and nothing is lost"
mv "${file%/*}" "$artefacts/moved_away"
visible_windows >"$artefacts/windows"
press_key ctrl+s
wait_for 15 "message titled Blockhouse about the folder that is not there" window_named '^Blockhouse$' >/dev/null
screenshot "$artefacts/8-not-saved.png"
[[ ! -e $file ]] || fail "the file is there, but its folder was not"
press_key Return
wait_for 10 "end of the message after Return on its OK" no_new_window "$artefacts/windows"
settled comment_lengths "$window"
has_colour "$window" "$documents" "$keyword_colour" 20 || fail "the text is gone after a save that failed"
mkdir "${file%/*}"
saved_is "$expected" "the text that could not be saved before"
rm -r "$artefacts/moved_away"

say "Closing the main window ends the program"
status=0
end_program "$window" || status=$?
((status == 0)) || fail "the program's exit code is $status"
cmp -s "$expected" "$file" || fail "closing has changed the file: expected $expected, saved $file"
say "Done"
