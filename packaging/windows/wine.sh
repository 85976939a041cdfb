#!/usr/bin/env bash
# Runs a program for Windows under Wine, in a home of its own: build/wine, or $WINEPREFIX.
set -euo pipefail
build=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../..")/build
export WINEPREFIX=${WINEPREFIX:-$build/wine}
export WINEDEBUG=${WINEDEBUG:--all}
# The first two are not needed, and Wine would offer to fetch them; the third writes into the desktop's own menus.
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
# Else it knows no file whose name is not ASCII.
export LC_ALL=C.UTF-8

# Programs started while that home is being made would find half of it.
if [[ ! -e $WINEPREFIX/made ]]; then
  mkdir -p "$WINEPREFIX"
  (
    flock 9
    if [[ ! -e $WINEPREFIX/made ]]; then
      wine wineboot --init
      wineserver --wait
      touch "$WINEPREFIX/made"
    fi
  ) 9>"$WINEPREFIX.lock"
fi
exec wine "$@"
