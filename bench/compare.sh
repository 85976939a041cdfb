#!/usr/bin/env bash
# Opens the same generated files in other editors and in this program, on one virtual screen in one run, and searches
# the same files with grep, ripgrep and this program. Prints tables; the screenshots show that every editor really had
# the file open.
#
#   bench/compare.sh [runs]     the median of so many (3) counts; one run for the largest file
#
# A time is from the start of the process to the last moment in which it used the processor before a second of rest.
# Memory is the process's own peak. The processor time is counted in steps of 10 ms.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
runs=${1:-3}
build=$root/build/release
out=$root/build/compare
longest=120 # seconds

scripts/install_dependencies.sh compare
cmake --preset release
cmake --build --preset release --parallel "$(nproc)" --target open_file search_bench
# shellcheck source=tests/journeys/lib.sh
. tests/journeys/lib.sh
rm -rf "$out"
journey_begin "$out"
export HOME=$out/home XDG_CONFIG_HOME=$out/home/.config XDG_RUNTIME_DIR=$out/home GTK_A11Y=none NO_AT_BRIDGE=1
mkdir -p "$HOME"
chmod 700 "$HOME"
start_display 1280x800x24

# ticks <pid>: processor time of the process and the children it has waited for, in hundredths of a second.
ticks() { awk '{ sub(/^.*\) /, ""); print $12 + $13 + $14 + $15 }' "/proc/$1/stat" 2>/dev/null; }

# open_once <name> <command...>: sets seconds and megabytes; seconds is empty if it did not come to rest in time.
open_once() {
  local name=$1 pid began now used last_used=-1 last_change
  shift
  began=${EPOCHREALTIME/./}
  last_change=$began
  "$@" >"$out/$name.log" 2>&1 </dev/null &
  pid=$!
  started_pids+=("$pid")
  seconds=""
  while :; do
    sleep 0.02
    now=${EPOCHREALTIME/./}
    used=$(ticks "$pid") || true
    [[ -n $used ]] || fail "$name has ended: $(tail -n 3 "$out/$name.log")"
    if [[ $used != "$last_used" ]]; then
      last_used=$used
      last_change=$now
    elif ((now - last_change > 1000000 && now - began > 1500000)); then
      seconds=$(awk -v us="$((last_change - began))" 'BEGIN { printf "%.2f", us / 1e6 }')
      break
    fi
    ((now - began < longest * 1000000)) || break
  done
  megabytes=$(awk '/^VmHWM/ { printf "%.0f", $2 / 1024 }' "/proc/$pid/status")
  screenshot "$out/$name.png"
  kill "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
}

# opening <name> <MB> <command...>: prints "seconds s, megabytes MB", the median of the runs.
opening() {
  local name=$1 size=$2 all="" times=$runs
  shift 2
  ((size < 100)) || times=1
  for ((; times > 0; times--)); do
    open_once "$name-$size" "$@"
    if [[ -z $seconds ]]; then
      echo "over $longest s, $megabytes MB"
      return
    fi
    all+="$seconds $megabytes"$'\n'
  done
  printf '%s' "$all" | sort -n | awk '{ s[NR] = $1; m[NR] = $2 } END { n = int((NR + 1) / 2); printf "%s s, %s MB\n", s[n], m[n] }'
}

sizes=(1 10 100)
for size in "${sizes[@]}"; do "$build/bin/open_file" --write "$size" "$out/data$size.ini"; done

{
  echo "| | 1 MB | 10 MB | 100 MB |"
  echo "|---|---|---|---|"
  row() {
    local name=$1 line="| $1 |" size
    shift
    for size in "${sizes[@]}"; do line+=" $(opening "${name// /_}" "$size" "$@" "$out/data$size.ini") |"; done
    echo "$line"
  }
  row Blockhouse env QT_QPA_PLATFORM=xcb "$build/bin/open_file"
  row SciTE scite
  row Geany geany -i -c "$out/home/geany"
  row FeatherPad featherpad --standalone
  row Mousepad mousepad --disable-server
} | tee "$out/table.md"

echo
QT_QPA_PLATFORM=offscreen "$build/bin/search_bench" 2>/dev/null | tee "$out/search.txt"
echo "Screenshots and logs: $out"
