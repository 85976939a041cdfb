#!/usr/bin/env bash
# Tries both packages that build.sh made, under Wine on a virtual screen, as their users do.
#
#   packaging/windows/try.sh
#
# The portable program goes through journeys that the tests know: it opens files by double-click, edits and saves them
# (every byte is compared), searches, drags a structure, and meets names of other alphabets. The installed one is
# installed, started and uninstalled. Then it opens, edits and saves 100 MB beyond the first 4 GB of its memory. The
# screenshots are for somebody to look at: build/windows/try.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(realpath "$here/../..")
out=$root/build/windows/try
packages=$root/build/windows/packages

"$root/scripts/install_dependencies.sh" wine
rm -rf "$out"
mkdir -p "$out"
export WINEPREFIX=$out/wine BLOCKHOUSE_RUNNER=$here/wine.sh
# shellcheck source=tests/journeys/lib.sh
. "$root/tests/journeys/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$root/tests/journeys/main_window.sh"
# shellcheck source=tests/journeys/document.sh
. "$root/tests/journeys/document.sh"

# Waits for the end of everything: what goes on in the background would keep the screen, or the want of one, that it was
# started with, for the programs started next as well.
in_wine() {
  "$here/wine.sh" "$@" >>"$out/wine.log" 2>&1 </dev/null
  wineserver --wait
}

# Wine has fonts of its own that are no text editor's.
prepare_wine() {
  local family
  for family in Arial "MS Sans Serif" "MS Shell Dlg" "MS Shell Dlg 2" "Segoe UI" Tahoma; do
    in_wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$family" /d "Liberation Sans" /f
  done
  in_wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "Courier New" /d "Liberation Mono" /f
}

try_portable() {
  local journey program
  unzip -q "$packages"/blockhouse-*-windows.zip -d "$out/portable"
  program=$(find "$out/portable" -name blockhouse.exe)
  for journey in other_letters edit_file find_reference place_structures unsaved_text; do
    say "== The portable program: $journey"
    "$root/tests/journeys/$journey.sh" "$program" "$out/$journey"
  done
}

# The user's folders of Wine's own C: drive.
users_folder() { find "$WINEPREFIX/drive_c/users" -path "*/AppData/$1" -type d -not -path '*/Public/*' | head -n 1; }

try_installed() {
  local setup installed shortcut lists window file
  say "== The installer installs for its user, with an entry in the start menu"
  setup=$(find "$packages" -name 'blockhouse-*-setup.exe')
  in_wine "$setup" /S
  installed=$(users_folder Local)/Programs/Blockhouse
  wait_for 60 "uninstaller" test -e "$installed/uninstall.exe"
  for file in blockhouse.exe LICENSE.txt SOURCES.txt docs/user-guide.md licences/GPL-3.txt; do
    [[ -s $installed/$file ]] || fail "there is no $file"
  done
  shortcut=$(find "$WINEPREFIX/drive_c" -name Blockhouse.lnk)
  [[ -s $shortcut ]] || fail "there is no entry in the start menu"

  say "== Installed, it asks for directories and keeps its lists with the user's data"
  start_program "$installed/blockhouse.exe"
  wait_for 60 "directory editor" window_named '^Add Directorys$' >/dev/null
  window=$(window_named '^Add Directorys$')
  xdotool windowactivate --sync "$window"
  settled snapshot "$window" "0,0,320,258"
  screenshot "$out/installed.png"
  press_key alt+a
  settled snapshot "$window" "0,0,320,258"
  press_key alt+F4
  confirm "the saved directories"
  window=$(window_named '^Project$')
  lists=$(users_folder Roaming)/blockhouse
  wait_for 10 "list of the user's" test -s "$lists/Dirs.lst"
  [[ ! -e $installed/Dirs.lst ]] || fail "a list lies beside the program"
  if "$here/wine.sh" "$setup" /S >>"$out/wine.log" 2>&1; then
    fail "the installer says that it has replaced a running program"
  fi
  end_program "$window" || fail "the program ended with $?"

  say "== Uninstalled, it leaves nothing but the lists"
  in_wine "$installed/uninstall.exe" /S
  wait_for 60 "end of the program's folder" test ! -e "$installed"
  [[ ! -e $shortcut ]] || fail "the entry in the start menu has stayed"
  [[ -s $lists/Dirs.lst ]] || fail "the lists have gone"
}

# Positions and pointers are wider than a "long" here: whatever of them is cut off does not show in small programs.
try_large_file() {
  local window file=$out/large.ini
  say "== 100 MB beyond 4 GB are opened, edited and saved"
  cmake -S "$root" -B "$root/build/windows/program" -DBLOCKHOUSE_BENCH=ON >"$out/bench.log"
  cmake --build "$root/build/windows/program" --target open_file >>"$out/bench.log"
  cmake -S "$root" -B "$root/build/windows/program" -DBLOCKHOUSE_BENCH=OFF >>"$out/bench.log"
  cp "$root/build/windows/program/bin/open_file.exe" "$out/"
  in_wine "$out/open_file.exe" --write 100 "$file" || fail "no large file: $(tail -n 3 "$out/wine.log")"
  { printf 'Zq'; cat "$file"; } >"$out/large_whole.ini"
  LC_ALL=C cut_behind_last_end "$out/large_whole.ini" >"$out/large_expected.ini"
  (cd "$out" && exec "$BLOCKHOUSE_RUNNER" "$out/open_file.exe" --take 5 "$file" >"$out/program.log" 2>&1) &
  program_pid=$!
  started_pids+=("$program_pid")
  wait_for 60 "main window" window_named '^Project$' >/dev/null
  window=$(window_named '^Project$')
  wait_for 60 "comments of the large file" has_colour "$window" "0,0,800,600" "$comment_colour" 1000
  xdotool windowactivate --sync "$window"
  click "$window" 200 300
  press_key ctrl+Home
  type_text "Zq"
  press_key ctrl+s
  wait_for 60 "saved large file" cmp -s "$out/large_expected.ini" "$file"
  screenshot "$out/large.png"
  program_has_not_died || fail "the program has ended"
  end_program "$window" || fail "the program ended with $?"
  rm "$out"/large*.ini
}

prepare_wine
try_portable
journey_begin "$out"
start_display 1280x800x24
try_installed
try_large_file
say "Both packages work. Screenshots: $out"
