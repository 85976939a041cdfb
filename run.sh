#!/usr/bin/env bash
# Builds the editor and starts it on the sample workspace. On a bare Debian 12 it first installs what is missing.
# On a machine without a display it shows the editor on a virtual one and leaves a screenshot.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
root=$PWD
build=$root/build/run
program=$build/bin/blockhouse

scripts/install_dependencies.sh run
mkdir -p "$build"
cmake --preset release -B "$build" \
  -DBLOCKHOUSE_TESTS=OFF -DBLOCKHOUSE_BENCH=OFF -DBLOCKHOUSE_WERROR=OFF >"$build/configure.log" 2>&1 || {
  cat "$build/configure.log" >&2
  exit 1
}
cmake --build "$build" --parallel "$(nproc)" --target blockhouse
scripts/lay_out_workspace.sh "$build/bin"

if [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]; then
  exec "$program"
fi

echo "There is no display here, so the editor is shown on a virtual one."
# shellcheck source=tests/journeys/lib.sh
. tests/journeys/lib.sh
# shellcheck source=tests/journeys/main_window.sh
. tests/journeys/main_window.sh

journey_begin "$build/demonstration"
start_display 1280x800x24
start_program "$program"
wait_for 60 "main window" window_named '^Project$' >/dev/null
window=$(window_named '^Project$')
resize_window "$window" 1000 640
wait_for 20 "directory tree" tree_shows "$window"
open_tree_file "$window" 1
wait_for 20 "coloured file" has_colour "$window" "$(documents_area "$window")" "$comment_colour" 200
settled comment_lengths "$window"
screenshot "$build/screenshot.png" "$window"
end_program "$window"
echo "Opened the first file of the tree. Screenshot: $build/screenshot.png"
