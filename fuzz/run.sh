#!/usr/bin/env bash
# Builds the fuzzers with clang and lets each run for a while.
#
#   fuzz/run.sh <seconds> [target...]
#
# What a fuzzer learns stays in build/fuzz/corpus/<target>, and the next run goes on from there. An input that breaks
# something is left in build/fuzz/found/<target>: put it into fuzz/seeds/<target> under a name that says what it is, and
# every later test run replays it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds=${1:?for how many seconds?}
shift
targets=("$@")
if ((${#targets[@]} == 0)); then
  for seeds in fuzz/seeds/*/; do targets+=("$(basename "$seeds")"); done
fi

scripts/install_dependencies.sh fuzz
cmake --preset fuzz
cmake --build --preset fuzz --parallel "$(nproc)" --target fuzz_targets

export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1
export LSAN_OPTIONS=suppressions=$PWD/fuzz/leaks.supp:print_suppressions=0

fuzz_one() {
  local target=$1 corpus=build/fuzz/corpus/$1 found=build/fuzz/found/$1 log=build/fuzz/$1.log
  mkdir -p "$corpus" "$found"
  if ! "build/fuzz/bin/fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=4096 -max_len=4096 \
    -print_final_stats=1 -artifact_prefix="$found/" "$corpus" "fuzz/seeds/$target" >"$log" 2>&1; then
    echo "$target: FAILED, see $log and $found"
    tail -n 40 "$log"
    return 1
  fi
  awk -v target="$target" '
    /^stat::number_of_executed_units/ { runs = $2 }
    /cov: / { for (i = 1; i < NF; i++) if ($i == "cov:") covered = $(i + 1) }
    END { printf "%s: nothing found in %d inputs, %d edges reached\n", target, runs, covered }' "$log"
}
export -f fuzz_one
export seconds
printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I{} bash -c 'fuzz_one {}'
