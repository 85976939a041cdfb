#!/usr/bin/env bash
# Puts the sample workspace into an application folder that has no directory list yet.
#
#   scripts/lay_out_workspace.sh <application folder>
#
# The application folder is the one that holds the program. An existing Dirs.lst, and whatever data it names, is
# the user's own and stays untouched.
set -euo pipefail
export LC_ALL=C

samples=$(cd "$(dirname "${BASH_SOURCE[0]}")/../samples/workspace" && pwd)
mkdir -p "${1:?the application folder is missing}"
folder=$(cd "$1" && pwd)
[[ -e $folder/Dirs.lst ]] && exit 0

# The readers of the list files split a line at commas unless it is quoted.
list_line() {
  if [[ $1 == *,* ]]; then printf '"%s"\r\n' "$1"; else printf '%s\r\n' "$1"; fi
}

for entry in "$samples"/*/; do
  cp -R "${entry%/}" "$folder/"
done
[[ -e $folder/jumps.lst ]] || cp "$samples/jumps.lst" "$folder/jumps.lst"

# Written last and in one move, so that a broken-off run is taken up again by the next one.
cd "$samples"
find . -mindepth 2 -type f -printf '%h\n' | sort -u | while IFS= read -r directory; do
  list_line "$folder/${directory#./}"
done >"$folder/Dirs.lst.new"
mv "$folder/Dirs.lst.new" "$folder/Dirs.lst"
