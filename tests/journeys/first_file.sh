#!/usr/bin/env bash
# From the start of the program to two coloured files, seen and handled from outside.
#
#   first_file.sh <program> <artefact folder>
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"

shows_comments() { [[ $(comment_lengths "$window") == "$1" ]]; }

# The splash window stays for two seconds: looked for first, it cannot be missed for the main window.
first_window_shows() { splash=$(window_sized 328 299) || window_named '^Project$' >/dev/null; }

splash_has_gone() { ! window_sized 328 299 >/dev/null; }

shows_another_file() { ! shows_comments "$first" && has_colour "$window" "$documents" "$comment_colour" 2000; }

# Behind a comment that ends before the window does, the rest of its line is white.
comments_end_with_their_lines() {
  colour_runs "$window" "$documents" "$comment_colour" | awk '
    $3 >= 12 { ends[$2]++ }
    END { for (column in ends) different++; exit different >= 3 ? 0 : 1 }'
}

panel_is() {
  local width
  width=$(($(tree_width_shown "$window" "$top") + tree_inset))
  ((width >= $1 - 6 && width <= $1 + 6))
}

program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"

say "The splash window comes first, the main window after it"
start_display 1280x800x24
start_program "$folder/${program##*/}"
splash=""
wait_for 30 "window" first_window_shows
[[ -n $splash ]] || fail "the main window came without a splash window"
# So it is left out of task bars.
titled=$(window_named '^Blockhouse$') || titled=""
[[ -z $titled ]] || is_a_splash_window "$titled" || splash_has_gone || fail "the window system does not know it as a splash window"
screenshot "$artefacts/1-splash.png" "$splash" || say "  (gone before a picture of it could be taken)"
wait_for 30 "main window" window_named '^Project$' >/dev/null
window=$(window_named '^Project$')
wait_for 10 "end of the splash window" splash_has_gone
[[ $(window_size "$window") == "519 437" ]] || fail "the main window is $(window_size "$window"), not 519 437"
width=1000
resize_window "$window" "$width" 600
wait_for 10 "directory tree" tree_shows "$window"
settled snapshot "$window" "0,0,$width,600"
top=$(tree_top "$window")
documents=$(documents_area "$window")
bar=$(bar_area "$window" "$top")

say "The panel hides by its x and comes back by the menu"
panel_is "$panel_width" || fail "the panel is $(($(tree_width_shown "$window" "$top") + tree_inset)) pixels wide"
click "$window" $((width - 17)) $((top - 13))
wait_for 10 "hidden panel" tree_is_gone "$window"
press_key alt+v f
wait_for 10 "panel after View > File Explorer" tree_shows "$window"

say "The strip at its left edge changes its width"
point_at "$window" $((width - panel_width + 4)) $((top + 200))
xdotool mousedown 1
point_at "$window" $((width - 320)) $((top + 210))
wait_for 10 "panel of 320 pixels" panel_is 320
point_at "$window" $((width - panel_width)) $((top + 220))
wait_for 10 "panel of $panel_width pixels" panel_is "$panel_width"
xdotool mouseup 1
point_at "$window" 400 $((top + 220))
settled snapshot "$window" "0,0,$width,600"
panel_is "$panel_width" || fail "the panel goes on following the mouse after the button is released"

say "A double-click opens a file, coloured"
lacks_colour "$window" "$documents" "$comment_colour" || fail "there is comment colour before any file is open"
pixels "$window" "$bar" >"$artefacts/bar_empty"
open_tree_file "$window" 1
wait_for 20 "highlighted comments" has_colour "$window" "$documents" "$comment_colour" 2000
wait_for 10 "navy keywords" has_colour "$window" "$documents" "$keyword_colour" 20
settled comment_lengths "$window"
screenshot "$artefacts/2-first-file.png"
comments_end_with_their_lines || fail "the comments' colour does not end with their lines: $(
  colour_runs "$window" "$documents" "$comment_colour" | tr '\n' '|')"
first=$(comment_lengths "$window")
read -r first_from first_to <<<"$(changed_columns "$window" "$bar" "$artefacts/bar_empty")" ||
  fail "the window bar has no button for the file"

say "A second file puts the first one away"
open_tree_file "$window" 2
wait_for 20 "second file" shows_another_file
settled comment_lengths "$window"
screenshot "$artefacts/3-second-file.png"
second=$(comment_lengths "$window")
[[ $first != "$second" ]] || fail "both files look alike: $first"
read -r _ second_to <<<"$(changed_columns "$window" "$bar" "$artefacts/bar_empty")"
((second_to > first_to + 20)) || fail "the window bar has no second button"

say "The window bar's buttons put windows away and bring them back"
button_of_first=$(((first_from + first_to) / 2))
button_of_second=$(((first_to + second_to) / 2))
bar_row=$((top - 24 - 11))
click "$window" "$button_of_second" "$bar_row"
wait_for 10 "empty documents area" lacks_colour "$window" "$documents" "$comment_colour"
click "$window" "$button_of_first" "$bar_row"
wait_for 10 "first file again" shows_comments "$first"
screenshot "$artefacts/4-first-file-again.png"
click "$window" "$button_of_second" "$bar_row"
wait_for 10 "second file again" shows_comments "$second"
click "$window" "$button_of_second" "$bar_row"
wait_for 10 "both files put away" lacks_colour "$window" "$documents" "$comment_colour"

say "Closing the main window ends the program"
status=0
end_program "$window" || status=$?
((status == 0)) || fail "the program's exit code is $status"
cmp -s "$folder/Data/Army/AmberfoldArmy.ini" "$here/../../samples/workspace/Data/Army/AmberfoldArmy.ini" ||
  fail "looking at a file has changed it"
say "Done"
