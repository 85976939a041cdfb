#!/usr/bin/env bash
# The package: made, checked, unpacked, started by a user who may not write where it lies, removed without a trace.
#
#   install.sh <build folder> <artefact folder>
#
# On a machine that is thrown away afterwards (CI=true, as root) it is really installed and purged. Everywhere else it
# is unpacked into a folder and started from there.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/journeys/lib.sh
. "$here/lib.sh"
# shellcheck source=tests/journeys/main_window.sh
. "$here/main_window.sh"

build=$(realpath "$1")
journey_begin "$2"
artefacts=$(cd "$artefacts" && pwd)

say "The package is made, and its menu entry and its description are valid"
rm -rf "${artefacts:?}/package" "${artefacts:?}/root"
cpack --config "$build/CPackConfig.cmake" -B "$artefacts/package" >"$artefacts/cpack.log" 2>&1 ||
  fail "no package: $(tail -n 5 "$artefacts/cpack.log")"
package=$(find "$artefacts/package" -maxdepth 1 -name '*.deb')
root=$artefacts/root
dpkg-deb -x "$package" "$root"
desktop-file-validate "$root/usr/share/applications/blockhouse.desktop"
appstreamcli validate --no-net "$root/usr/share/metainfo/blockhouse.metainfo.xml" >"$artefacts/appstream.log" ||
  fail "the description is not valid: $(<"$artefacts/appstream.log")"
for owned in bin/blockhouse share/icons/hicolor/scalable/apps/blockhouse.svg share/doc/blockhouse/copyright; do
  [[ -f $root/usr/$owned ]] || fail "the package has no $owned"
done
dpkg-deb --fsys-tarfile "$package" | tar -t | grep -v '/$' | sed 's/^\.//' >"$artefacts/files"

installed=false
if [[ ${CI:-} == true ]] && ((EUID == 0)); then
  installed=true
  root=""
  apt-get install --yes --no-install-recommends "$package" >"$artefacts/apt.log" 2>&1 ||
    fail "it does not install: $(tail -n 5 "$artefacts/apt.log")"
fi

say "Started by a user, it asks for directories and keeps its lists with that user's data"
HOME=$(mktemp -d)
export HOME XDG_DATA_HOME="" XDG_CONFIG_HOME="" XDG_RUNTIME_DIR=$HOME
as_user=()
if ((EUID == 0)); then
  # Root may write everywhere, which would prove nothing.
  chown 65534:65534 "$HOME"
  as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
fi
start_display 1280x800x24 -ac
(cd / && QT_QPA_PLATFORM=xcb exec "${as_user[@]}" "$root/usr/bin/blockhouse") >"$artefacts/program.log" 2>&1 </dev/null &
program_pid=$!
started_pids+=("$program_pid")
wait_for 30 "directory editor" window_named '^Add Directorys$' >/dev/null
wait_for 30 "main window" window_named '^Project$' >/dev/null
window=$(window_named '^Project$')
xdotool windowactivate --sync "$(window_named '^Add Directorys$')" key alt+F4
wait_for 10 "end of the directory editor" no_window_named '^Add Directorys$'
resize_window "$window" 700 500
settled snapshot "$window" "0,0,700,500"
look=$(snapshot "$window" "0,60,700,440")
looks_other_than() { [[ $(snapshot "$window" "0,60,700,440") != "$1" ]]; }
xdotool windowactivate --sync "$window"
press_key alt+v o
wait_for 10 "jump list editor" looks_other_than "$look"
xdotool type --delay 12 Armor
press_key Return ctrl+w
confirm "the saved jump list"
[[ $(<"$HOME/.local/share/blockhouse/jumps.lst") == $'Armor\r' ]] || fail "the user's data has no list with the entry"
screenshot "$artefacts/1-installed.png"
end_program "$window" || fail "the program ended with $?"
while IFS= read -r path; do
  [[ -e $root$path ]] || fail "$path has gone"
done <"$artefacts/files"
[[ -z $(find "$root/usr/bin" -name '*.lst') ]] || fail "a list lies beside the program"

if [[ $installed == true ]]; then
  say "Purged, it leaves nothing but what the user made"
  apt-get purge --yes blockhouse >>"$artefacts/apt.log" 2>&1 || fail "it does not go: $(tail -n 5 "$artefacts/apt.log")"
  while IFS= read -r path; do
    [[ ! -e $path ]] || fail "$path is still there"
  done <"$artefacts/files"
  [[ ! -e /usr/share/doc/blockhouse ]] || fail "a folder is still there"
  [[ -e $HOME/.local/share/blockhouse/jumps.lst ]] || fail "the user's list has gone with the program"
fi
rm -rf "$HOME"
say "Done"
