#!/usr/bin/env bash
# Text that is not in its file: closed and brought back, changed on the disk by another program meanwhile, and a
# clipboard that does not answer. Nothing that anybody wrote may be gone.
#
#   unsaved_text.sh <program> <artefact folder>
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"
# shellcheck source=tests/journeys/document.sh
. "$here/document.sh"
export LC_ALL=C

notice_colour=ffffdc # of tool tips, in the default look

notice_is_there() { has_colour "$window" "$documents" "$notice_colour" 2000; }

notice_is_gone() { lacks_colour "$window" "$documents" "$notice_colour"; }

# Holds the clipboard and answers nobody.
start_silent_owner() {
  printf 'never given' | xclip -selection clipboard -quiet 2>/dev/null &
  silent_owner=$!
  started_pids+=("$silent_owner")
  wait_for 10 "other owner of the clipboard" clipboard_is_never_given
  kill -STOP "$silent_owner"
}

clipboard_is_never_given() { [[ $(timeout 2 xclip -selection clipboard -o 2>/dev/null) == "never given" ]]; }

end_silent_owner() {
  kill -CONT "$silent_owner"
  kill "$silent_owner"
}

# saved_is_now <expected>: without saving
saved_is_now() { cmp -s "$1" "$file"; }

kept_beside() { find "${file%/*}" -name '*.bak'; }

one_is_kept_beside() { (($(kept_beside | wc -l) == 1)); }

# ---- the journey ----------------------------------------------------------------------------------------------

program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"
file=$folder/Data/Army/AmberfoldArmy.ini
cut_behind_last_end "$file" >"$artefacts/cut.ini"
cp "$artefacts/cut.ini" "$file"

start_display 1280x800x24
open_main_window 1000 600
lacks_colour "$window" "$documents" "$notice_colour" || fail "there is the colour of notices before there is any"
open_coloured_file 1

say "A window closed with unsaved text tells how it comes back"
press_key ctrl+Home
type_text "Zq"
screenshot "$artefacts/1-typed.png"
press_key ctrl+F4
wait_for 10 "notice at the foot of the main window" notice_is_there
screenshot "$artefacts/2-closed.png"
saved_is_now "$artefacts/cut.ini" || fail "closing wrote the file"

say "Another program changes the file meanwhile; the text comes back, with a notice about that"
printf 'Object SomebodyElses\r\nEnd\r' >"$artefacts/others.ini"
cp "$artefacts/others.ini" "$folder/Data/Army/new" && mv "$folder/Data/Army/new" "$file"
press_key ctrl+shift+t
wait_for 10 "comments of the text that comes back" has_colour "$window" "$documents" "$comment_colour" 1000
wait_for 10 "notice that the file has changed" notice_is_there
screenshot "$artefacts/3-back.png"

say "Saved, the file holds the text, and what the other program wrote is kept beside it"
with_inserted "$artefacts/cut.ini" 0 "Zq" >"$artefacts/expected.ini"
saved_is "$artefacts/expected.ini" "the text that was closed"
one_is_kept_beside || fail "not one but these are kept beside: $(kept_beside)"
cmp -s "$(kept_beside)" "$artefacts/others.ini" || fail "what the other program wrote is not what is kept"
screenshot "$artefacts/4-saved.png"
press_key Escape
wait_for 10 "end of the notice after Escape" notice_is_gone

say "Pasting from a program that does not answer changes nothing and says so"
press_key shift+Right shift+Right ctrl+c
start_silent_owner
press_key ctrl+v
wait_for 20 "notice that the clipboard does not answer" notice_is_there
screenshot "$artefacts/5-clipboard.png"
end_silent_owner
saved_is "$artefacts/expected.ini" "what was there before"

say "Closing the main window ends the program"
status=0
end_program "$window" || status=$?
((status == 0)) || fail "the program's exit code is $status"
say "Done"
