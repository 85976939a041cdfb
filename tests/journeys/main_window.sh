# shellcheck shell=bash
# shellcheck disable=SC2034,SC2154 # names shared with lib.sh and with the scripts that source both
# Where things are in the main window, and how a hand gets at them. Sourced after lib.sh.
#
# Menu bar and window bar are at the top, the explorer panel at the right. The panel's left edge is a strip to drag,
# its "x" is at the top right, and the tree starts 24 pixels below the panel's top. Only where that top is depends on
# the desktop's fonts, so it is read off the screen.

comment_colour=ffffc0
keyword_colour=000080
# Of a selection in the text, which is the desktop's.
selection_colour=b0b0b0
[[ -z ${BLOCKHOUSE_RUNNER:-} ]] || selection_colour=c0c0c0
panel_width=182
tree_inset=16

# lay_out_program <program>: sets folder, which gets a copy of the program with the sample workspace and list files
# beside it. The program's list files are those beside it, so no journey disturbs another.
lay_out_program() {
  folder=$artefacts/program
  rm -rf "$folder"
  mkdir -p "$folder"
  folder=$(cd "$folder" && pwd)
  artefacts=$(cd "$artefacts" && pwd)
  cp "$1" "$folder/"
  "$here/../../scripts/lay_out_workspace.sh" "$folder"
}

# open_main_window <width> <height>: starts the program and sets window and documents when its tree is there.
open_main_window() {
  start_program "$folder/${program##*/}"
  wait_for 30 "main window" window_named '^Project$' >/dev/null
  window=$(window_named '^Project$')
  resize_window "$window" "$1" "$2"
  wait_for 10 "directory tree" tree_shows "$window"
  settled snapshot "$window" "0,0,$1,$2"
  documents=$(documents_area "$window")
}

# text_origin: "x y" of the text's first pixel while the file's first line, a comment, is in view. A caret may blink
# in one of the comments.
text_origin() {
  local width
  IFS=, read -r _ _ width _ <<<"$documents"
  pixels "$window" "$documents" | awk -v width="$width" '
    $0 == " ff ff c0" {
      x = (NR - 1) % width
      if (!found) { y = int((NR - 1) / width); left = x; found = 1 }
      if (x < left) left = x
    }
    END { if (!found) exit 1; print left, y }'
}

# open_coloured_file <n>: the n-th file of the first directory, and waits for its colours.
open_coloured_file() {
  open_tree_file "$window" "$1"
  wait_for 20 "highlighted comments" has_colour "$window" "$documents" "$comment_colour" 2000
  settled comment_lengths "$window"
}

# confirm <what>: waits for the program's message box and presses its button.
confirm() {
  local box
  wait_for 10 "message box about $1" window_named '^Blockhouse$' >/dev/null
  box=$(window_named '^Blockhouse$')
  settled snapshot "$box" "0,0,60,40"
  screenshot "$artefacts/message.png" "$box"
  xdotool windowactivate --sync "$box"
  press_key Return
  wait_for 10 "end of the message box about $1" no_window_named '^Blockhouse$'
}

# tree_top <window>: the tree's first row of pixels, while the panel has its first width. Fails while there is no tree.
# Looks at the few pixels left of the directories' arrows, which are white in every row, selected or not.
tree_top() {
  local width height
  read -r width height <<<"$(window_size "$1")"
  pixels "$1" "$((width - panel_width + tree_inset + 2)),0,3,$height" | awk '
    found { next }
    $0 != " ff ff ff" { start = int((NR - 1) / 3) + 1 }
    int((NR - 1) / 3) - start == 80 { found = 1; print start }
    END { exit !found }'
}

tree_shows() { tree_top "$1" >/dev/null; }

tree_is_gone() { ! tree_shows "$1"; }

# tree_width_shown <window> <tree top>: how far the tree's white reaches left from near the window's right edge.
tree_width_shown() {
  local width
  read -r width _ <<<"$(window_size "$1")"
  pixels "$1" "0,$(($2 + 300)),$((width - 30)),1" | awk '
    { white[NR] = ($0 == " ff ff ff") }
    END { for (n = NR; n > 0 && white[n]; n--) ; print NR - n + 30 }'
}

# documents_area <window>: everything left of the panel at its first width.
documents_area() {
  local width height
  read -r width height <<<"$(window_size "$1")"
  echo "0,0,$((width - panel_width)),$height"
}

# bar_area <window> <tree top>: the inside of the window bar, left of the panel.
bar_area() {
  local width
  read -r width _ <<<"$(window_size "$1")"
  echo "0,$(($2 - 24 - 20)),$((width - panel_width)),18"
}

# open_tree_file <window> <n>: double-clicks the n-th file (1-based) of the tree's first directory.
open_tree_file() {
  local window=$1 n=$2 top width height tree before rows first last
  top=$(tree_top "$window") || fail "there is no tree"
  read -r width height <<<"$(window_size "$window")"
  tree="$((width - panel_width + tree_inset)),$top,$((panel_width - tree_inset - 14)),300"

  # A click takes the first directory, Right opens it or goes to its first file, and Home comes back in both cases.
  xdotool windowactivate --sync "$window"
  click "$window" "$((width - 90))" "$((top + 9))"
  press_key Right Home
  for ((; n > 1; n--)); do press_key Down; done
  settled snapshot "$window" "$tree"

  # The last step down moves the selection by one row: what changes is two rows, the lower one being the file's.
  before="$artefacts/tree_before"
  pixels "$window" "$tree" >"$before"
  press_key Down
  wait_for 5 "selected file in the tree" changed_rows "$window" "$tree" "$before" >/dev/null
  settled snapshot "$window" "$tree"
  rows=$(changed_rows "$window" "$tree" "$before")
  rm "$before"
  read -r first last <<<"$rows"
  double_click "$window" "$((width - 90))" "$((top + last - (last - first + 1) / 4))"
}

# comment_lengths <window>: the pixel lengths of a few comments near the top of the text that are not cut off by the
# window: which file is shown, and how far it is scrolled, but not where its window lies. The first is left out, as a
# caret may blink in it.
comment_lengths() {
  colour_runs "$1" "$(documents_area "$1")" "$comment_colour" |
    awk '$3 >= 12 && ++whole > 1 && whole <= 4 { printf "%d ", $2 - $1 + 1 }'
}
