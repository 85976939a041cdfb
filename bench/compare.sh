#!/usr/bin/env bash
# Opens the same generated files in other editors and in this program, on one virtual screen in one run, and holds this
# program to its bounds: those of opening here, and all others by running the benchmarks. Ends with an error when one is
# missed. The screenshots show that every editor really had the file open.
#
#   bench/compare.sh [runs]     so many runs of every program at every size (5), the programs in turn;
#                               the two slowest at most three times
#
# A time is from the start of the process to rest: until it has used all the processor time but one step of 10 ms that
# it will have used when a second passes without a further step. The last step may be a blink of the caret's. Memory is
# the process's own peak. A program that takes longer than 40 s is ended, and not started again with that file.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
runs=${1:-5}
build=$root/build/release
out=$root/build/compare
longest=40 # seconds

scripts/install_dependencies.sh compare
cmake --preset release
cmake --build --preset release --parallel "$(nproc)"
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
  local name=$1 pid began now used last_used=-1 last_change step_before
  shift
  began=${EPOCHREALTIME/./}
  last_change=$began
  step_before=$began
  "$@" >"$out/$name.log" 2>&1 </dev/null &
  pid=$!
  started_pids+=("$pid")
  seconds=""
  while :; do
    sleep 0.005
    now=${EPOCHREALTIME/./}
    used=$(ticks "$pid") || true
    [[ -n $used ]] || fail "$name has ended: $(tail -n 3 "$out/$name.log")"
    if [[ $used != "$last_used" ]]; then
      last_used=$used
      step_before=$last_change
      last_change=$now
    elif ((now - last_change > 1000000 && now - began > 1500000)); then
      seconds=$(awk -v us="$((step_before - began))" 'BEGIN { printf "%.3f", us / 1e6 }')
      break
    fi
    ((now - began < longest * 1000000)) || break
  done
  megabytes=$(awk '/^VmHWM/ { printf "%.0f", $2 * 1024 / 1e6 }' "/proc/$pid/status")
  screenshot "$out/$name.png"
  kill "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
}

editors=(Blockhouse SciTE Geany FeatherPad Mousepad)
sizes=(1 10 100)

# open_in <editor> <size>
open_in() {
  local file=$out/data$2.ini
  case $1 in
    Blockhouse) open_once "$1-$2" env QT_QPA_PLATFORM=xcb "$build/bin/open_file" "$file" ;;
    SciTE) open_once "$1-$2" scite "$file" ;;
    Geany) open_once "$1-$2" geany -i -c "$out/home/geany" "$file" ;;
    FeatherPad) open_once "$1-$2" featherpad --standalone "$file" ;;
    Mousepad) open_once "$1-$2" mousepad --disable-server "$file" ;;
  esac
}

# The first run of each, which warms the system's caches, does not count.
measure() {
  local size run editor
  declare -A tooSlow=()
  for size in "${sizes[@]}"; do
    "$build/bin/open_file" --write "$size" "$out/data$size.ini"
    for ((run = 0; run <= runs; run++)); do
      for editor in "${editors[@]}"; do
        [[ -z ${tooSlow[$editor-$size]:-} ]] || continue
        # These take most of the time, and are far from any bound.
        [[ $editor != @(FeatherPad|Mousepad) ]] || ((run <= 3)) || continue
        open_in "$editor" "$size"
        [[ -n $seconds ]] || tooSlow[$editor-$size]=1
        ((run == 0)) && [[ -n $seconds ]] || echo "$size $run $editor ${seconds:-over} $megabytes"
      done
    done
  done >"$out/runs.txt"
}

# The table of medians, and this program's time over each other one's of the same round: median, least and greatest.
report() {
  awk -v sizes="${sizes[*]}" -v editors="${editors[*]}" -v longest="$longest" '
    function sort(values, n,   i, j, kept) {
      for (i = 2; i <= n; i++) {
        kept = values[i]
        for (j = i - 1; j > 0 && values[j] > kept; j--) values[j + 1] = values[j]
        values[j + 1] = kept
      }
    }
    { time[$1, $2, $3] = $4; memory[$1, $3] = $5; runs = $2 > runs ? $2 : runs }
    $4 == "over" { tooSlow[$1, $3] = 1 }
    function median(size, editor,   i, values, n) {
      for (i = 1; i <= runs; i++) if ((size, i, editor) in time) values[++n] = time[size, i, editor]
      sort(values, n)
      return values[int((n + 1) / 2)]
    }
    function ratio(size, editor,   i, values, n) {
      for (i = 1; i <= runs; i++)
        if ((size, i, editor) in time) values[++n] = time[size, i, "Blockhouse"] / time[size, i, editor]
      sort(values, n)
      least = values[1]; greatest = values[n]
      return values[int((n + 1) / 2)]
    }
    function bound(what, value, most) {
      verdict = value <= most ? "met" : "NOT MET"
      missed = missed || value > most
      printf "%-62s %5.2f (%.2f to %.2f), at most %.2f: %s\n", what, value, least, greatest, most, verdict
    }
    END {
      count = split(sizes, size, " "); editorCount = split(editors, editor, " ")
      printf "| |"; for (s = 1; s <= count; s++) printf " %s MB |", size[s]
      printf "\n|---|"; for (s = 1; s <= count; s++) printf "---|"
      print ""
      for (e = 1; e <= editorCount; e++) {
        printf "| %s |", editor[e]
        for (s = 1; s <= count; s++)
          if (tooSlow[size[s], editor[e]]) printf " over %d s |", longest
          else printf " %.2f s, %d MB |", median(size[s], editor[e]), memory[size[s], editor[e]]
        print ""
      }
      print ""
      for (s = 1; s <= count; s++)
        for (e = 2; e <= editorCount; e++)
          if (!tooSlow[size[s], editor[e]]) {
            value = ratio(size[s], editor[e])
            most = size[s] == 100 && editor[e] == "SciTE" ? 1.5 : 1
            bound("opening " size[s] " MB, over " editor[e] "'"'"'s time in the same round", value, most)
          }
      exit missed
    }' "$out/runs.txt"
}

measure
missed=0
report | tee "$out/table.md" || missed=1
for bench in open_bench edit_bench search_bench placement_bench; do
  echo
  QT_QPA_PLATFORM=offscreen "$build/bin/$bench" 2>/dev/null | tee "$out/$bench.txt" || missed=1
done
echo "Screenshots and logs: $out"
exit "$missed"
