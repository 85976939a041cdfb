#!/usr/bin/env bash
# A screen that is lower than some windows are by design: a small one whose user wants everything twice as large.
#
#   small_screen.sh <program> <artefact folder>
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"

height=768

# fits <title>: the window of that title, with its frame, is no taller than the screen. Where it lies is the window
# manager's choice.
fits() {
  local id tall above below
  wait_for 30 "window $1" window_named "^$1\$" >/dev/null
  id=$(window_named "^$1\$")
  settled window_size "$id"
  read -r _ tall <<<"$(window_size "$id")"
  IFS=', ' read -r _ _ above below <<<"$(xprop -id "$id" _NET_FRAME_EXTENTS | sed 's/.*= *//')"
  ((tall + above + below <= height)) || fail "$1 is $tall high, and its frame $((above + below))"
}

program=$(realpath "$1")
journey_begin "$2"
lay_out_program "$program"
export QT_SCALE_FACTOR=2
start_display "1366x${height}x24"
start_program "$folder/${program##*/}"

say "The main window and the placement editor start no taller than the screen"
fits Project
window=$(window_named '^Project$')
screenshot "$artefacts/1-main-window.png"
xdotool windowactivate --sync "$window"
press_key ctrl+shift+a
fits 'Building tool'
screenshot "$artefacts/2-placement.png"
end_program "$window" || fail "the program ended with $?"
say "Done"
