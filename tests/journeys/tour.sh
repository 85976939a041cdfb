#!/usr/bin/env bash
# Through every window by keyboard alone, with a picture of each: what the documents show, and what is to be looked at
# when the looks have changed.
#
#   tour.sh <program> <artefact folder> [scale] [light|dark]
#
# With a scale of 2 everything is twice as large, as on a fine screen.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"

scale=${3:-1}
theme=${4:-light}

# The toolkit takes its colours from such a file when it is told that the desktop is of that kind.
darken() {
  export XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5
  export XDG_CONFIG_DIRS=$artefacts/desktop HOME=$artefacts/desktop XDG_CONFIG_HOME=$artefacts/desktop
  mkdir -p "$artefacts/desktop"
  local group
  for group in Window View Button Tooltip; do
    printf '[Colors:%s]\nBackgroundNormal=42,46,50\nForegroundNormal=240,240,240\nBackgroundAlternate=49,54,59\n\n' "$group"
  done >"$artefacts/desktop/kdeglobals"
  printf '[Colors:Selection]\nBackgroundNormal=61,174,233\nForegroundNormal=255,255,255\n' >>"$artefacts/desktop/kdeglobals"
}

# picture <name> [window]: once the window, the main window unless told, has come to rest but for its caret.
picture() {
  local of=${2:-$window}
  sleep "$rest" # a caret blinks for ever, so nothing tells that all else is still
  screenshot "$artefacts/$1.png" "$of"
}

# window_after <title> <key...>: presses the keys and sets shown to the window that they open.
window_after() {
  local title=$1
  shift
  press_key "$@"
  wait_for 15 "window $title" window_named "$title" >/dev/null
  shown=$(window_named "$title")
  xdotool windowactivate --sync "$shown"
}

close_window() {
  xdotool windowactivate --sync "$1" key alt+F4
  wait_for 10 "end of window $2" no_window_named "$2"
  xdotool windowactivate --sync "$window"
}

rest=0.6
program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"
[[ $theme == light ]] || darken
export QT_SCALE_FACTOR=$scale
start_display "$((1280 * scale))x$((800 * scale))x24"

say "Splash window and main window"
start_program "$folder/${program##*/}"
wait_for 30 "splash window" window_named '^Blockhouse$' >/dev/null
picture splash "$(window_named '^Blockhouse$')"
wait_for 30 "main window" window_named '^Project$' >/dev/null
window=$(window_named '^Project$')
resize_window "$window" "$((1000 * scale))" "$((640 * scale))"
xdotool windowactivate --sync "$window"

say "The tree, a file in its editor, the find panel"
press_key F6 Home Right Down Return
wait_for 20 "highlighted comments" has_colour "$window" "0,0,$((800 * scale)),$((640 * scale))" "$comment_colour" 1000
press_key ctrl+Home Down
picture editor
press_key ctrl+f
xdotool type --delay 12 TrainTime
press_key Return
picture find
press_key Escape

say "The number of characters"
window_after '^Form1$' alt+f g
picture count "$shown"
close_window "$shown" '^Form1$'

say "The word at the caret, and every place that has it"
press_key ctrl+Home
xdotool key --delay 20 ctrl+f
xdotool type --delay 12 AmberfoldPikeman
press_key Return Escape Right Left Menu
visible_windows >"$artefacts/windows"
picture popup root
press_key r
wait_for 10 "end of the pop-up menu" no_new_window "$artefacts/windows"
picture search

say "The directories"
window_after '^Add Directorys$' alt+v d
picture directories "$shown"
xdotool windowactivate --sync "$shown" key alt+F4
confirm "the saved directories"
wait_for 10 "end of the directory editor" no_window_named '^Add Directorys$'

say "The placement editor"
xdotool windowactivate --sync "$window"
window_after '^Building tool$' alt+v a
press_key ctrl+o
wait_for 10 "dialog" window_named '^Open$' >/dev/null
xdotool windowactivate --sync "$(window_named '^Open$')"
xdotool type --delay 12 "$folder/Data/Skirmish/aidata.ini"
press_key Return
wait_for 10 "loaded file" window_named '^/aidata.ini$' >/dev/null
shown=$(window_named '^/aidata.ini$')
xdotool windowactivate --sync "$shown"
press_key Down # the first side
xdotool mousemove --window "$shown" "$((173 * scale))" "$((173 * scale))"
picture placement "$shown"
press_key alt+v l
picture log "$shown"
close_window "$shown" '^/aidata.ini$'

say "The settings to jump to"
xdotool windowactivate --sync "$window"
press_key alt+v o
picture options
press_key ctrl+w
confirm "the saved settings"
end_program "$window" || fail "the program ended with $?"
say "Done"
