#!/usr/bin/env bash
# Installs the Debian packages that are needed and missing.
#
#   scripts/install_dependencies.sh run    to build and to start the editor
#   scripts/install_dependencies.sh test   the same, and what the tests and benchmarks use
#   scripts/install_dependencies.sh fuzz   to build the fuzzers
#   scripts/install_dependencies.sh windows   to cross-build the packages for Windows
#   scripts/install_dependencies.sh wine   to cross-build the rules and to run programs for Windows
#   scripts/install_dependencies.sh compare   the same as test, and the programs that bench/compare.sh compares with
set -euo pipefail

build=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libqscintilla2-qt6-dev fonts-liberation)
virtual_screen=(xvfb openbox xdotool imagemagick x11-utils xclip)
peers=(scite geany featherpad mousepad grep ripgrep)
cross_build=(g++-mingw-w64-x86-64-posix dpkg-dev git nsis zip)
wine=(g++-mingw-w64-x86-64-posix wine wine64 fonts-wine googletest unzip)
fuzzing=(clang libclang-rt-dev libgtest-dev libgmock-dev)
tests=(libgtest-dev libgmock-dev libbenchmark-dev unrtf dpkg-dev desktop-file-utils appstream)

case "${1:-}" in
  run)
    purpose="build and run Blockhouse"
    wanted=("${build[@]}")
    if [[ -z ${DISPLAY:-} && -z ${WAYLAND_DISPLAY:-} ]]; then
      wanted+=("${virtual_screen[@]}")
    elif [[ -z ${DISPLAY:-} ]]; then
      wanted+=(qt6-wayland)
    fi
    ;;
  test)
    purpose="build and test Blockhouse"
    wanted=("${build[@]}" "${virtual_screen[@]}" "${tests[@]}")
    ;;
  fuzz)
    purpose="build the fuzzers of Blockhouse"
    wanted=("${build[@]}" "${fuzzing[@]}")
    ;;
  windows)
    purpose="build Blockhouse for Windows"
    wanted=("${build[@]}" "${cross_build[@]}")
    ;;
  wine)
    purpose="test Blockhouse for Windows"
    wanted=("${build[@]}" "${virtual_screen[@]}" "${wine[@]}")
    ;;
  compare)
    purpose="compare Blockhouse with other programs"
    wanted=("${build[@]}" "${virtual_screen[@]}" "${tests[@]}" "${peers[@]}")
    ;;
  *)
    echo "usage: $0 run|test|fuzz|windows|wine|compare" >&2
    exit 2
    ;;
esac

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
  echo "This is no Debian system, so nothing is installed. To $purpose you need what Debian calls: ${wanted[*]}"
  exit 0
fi

missing=()
for package in "${wanted[@]}"; do
  status=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
  [[ $status == installed ]] || missing+=("$package")
done
((${#missing[@]})) || exit 0

echo "Installing what is missing to $purpose: ${missing[*]}"
as_root=()
if ((EUID != 0)); then
  if ! command -v sudo >/dev/null; then
    echo "This needs root and there is no sudo. As root, run: apt-get install --no-install-recommends ${missing[*]}" >&2
    exit 1
  fi
  echo "(through sudo, which may ask for your password)"
  as_root=(sudo)
fi
apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
"${apt[@]}" update || echo "The package lists could not all be refreshed; going on with those that are there." >&2
"${apt[@]}" install --yes --no-install-recommends "${missing[@]}"
