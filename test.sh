#!/usr/bin/env bash
# Builds everything and runs the tests; on a bare Debian 12 it first installs what is missing.
#
#   ./test.sh           the optimised build
#   ./test.sh --asan    then the same tests built with the address and undefined-behaviour sanitizers
#
# With CI=true both are done, and in between each fuzzer runs for a minute and the text rules are built for Windows and
# tested under Wine. The first failure ends it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

sanitized=${CI:-false}
case "${1:-}" in
  "") ;;
  --asan) sanitized=true ;;
  *)
    echo "usage: $0 [--asan]" >&2
    exit 2
    ;;
esac

jobs=$(nproc)
scripts/install_dependencies.sh test
# Set for the build too, since it asks each test program for its list of tests.
export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1
export QT_QPA_PLATFORM=offscreen

build_and_test() {
  local preset=$1
  shift
  cmake --preset "$preset"
  cmake --build --preset "$preset" --parallel "$jobs"
  ctest --preset "$preset" --parallel "$jobs" "$@"
}

build_and_test release
if [[ ${CI:-false} == true ]]; then
  fuzz/run.sh 60
  scripts/install_dependencies.sh wine
  build_and_test windows-rules
fi
if [[ $sanitized == true ]]; then
  # The journeys look at the program from outside, at the pace of a hand: the optimised build is what they are for.
  build_and_test asan --label-exclude '^journey$'
fi
