#!/usr/bin/env bash
# Which window is in front, with a real window manager: another program's window comes and goes, and keys alone lead
# from file to file.
#
#   front_window.sh <program> <artefact folder>
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"

menus() { snapshot "$window" "0,0,300,18"; }

shows_comments() { [[ $(comment_lengths "$window") == "$1" ]]; }

menus_are() { [[ $(menus) == "$1" ]]; }

has_focus() { [[ $(xdotool getwindowfocus) == "$1" ]]; }

program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"
start_display 1280x800x24
open_main_window 1000 600
own_menus=$(menus)
open_coloured_file 1
first=$(comment_lengths "$window")
open_coloured_file 2
second=$(comment_lengths "$window")
[[ $first != "$second" ]] || fail "both files look alike: $first"

say "Another program's window in front leaves the menus as they are"
point_at "$window" 400 400
settled menus
editor_menus=$(menus)
[[ $editor_menus != "$own_menus" ]] || fail "the editor brings no menus"
xmessage -title other -geometry +1050+650 text >"$artefacts/xmessage.log" 2>&1 &
started_pids+=($!)
wait_for 10 "other program's window" window_named '^other$' >/dev/null
other=$(window_named '^other$')
xdotool windowactivate --sync "$other"
wait_for 10 "other program in front" has_focus "$other"
settled menus
screenshot "$artefacts/1-other-program.png"
menus_are "$editor_menus" || fail "the menus have changed behind the other program's window"
xdotool windowactivate --sync "$window"
settled menus
menus_are "$editor_menus" || fail "the menus are not the editor's"

say "Ctrl+Tab leads to the other file and back"
press_key ctrl+Tab
wait_for 10 "first file" shows_comments "$first"
press_key ctrl+Tab
wait_for 10 "second file" shows_comments "$second"

say "What is typed then is in the file that is seen, and nowhere else"
press_key ctrl+Tab
wait_for 10 "first file" shows_comments "$first"
press_key q u e e r Tab ctrl+s
wait_for 10 "saved file" grep -q "^queer	;" "$folder/Data/Army/AmberfoldArmy.ini"
cmp -s "$folder/Data/Army/GravelmarkArmy.ini" "$here/../../samples/workspace/Data/Army/GravelmarkArmy.ini" ||
  fail "the file that is not seen has changed"

say "With no window up the menus are the main window's, and a key brings a file back"
press_key alt+1 # it is up already
press_key F6    # from the text to its button
press_key space # which puts it away
wait_for 10 "main window's menus" menus_are "$own_menus"
wait_for 10 "nothing but the tree" lacks_colour "$window" "$documents" "$comment_colour"
press_key alt+2
wait_for 10 "second file" shows_comments "$second"
screenshot "$artefacts/2-second-file.png"
end_program "$window" || fail "the program ended with $?"
say "Done"
