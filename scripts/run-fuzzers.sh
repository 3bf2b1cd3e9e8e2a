#!/usr/bin/env bash
# Builds the libFuzzer targets in build-fuzz/ (clang, ASan + UBSan) and runs
# each for a while: scripts/run-fuzzers.sh [SECONDS_PER_TARGET] [TARGET...]
#
# Targets: string_store, chart_file, nice_intervals, pipeline (default: all).
# Each runs on a copy of its seed corpus in build-fuzz/corpus/<target>, so the
# checked-in seeds stay small; crashers land in build-fuzz/artifacts/<target>/.
# Copy a crasher into fuzz/regressions/<target>/ once it is fixed, so the
# replay tests keep running it. Exits non-zero when any target found a crash.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=$top/build-fuzz
seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(string_store chart_file nice_intervals pipeline csv_import time_text)

"$top/scripts/ensure-deps.sh" clang-14 libfuzzer-14-dev

cmake -S "$top" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++-14 -DORV_FUZZ=ON -DORV_BUILD_TESTS=OFF \
  -DORV_BUILD_BENCHMARKS=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j 2 --target "${targets[@]/%/_fuzzer}"

failed=()
for target in "${targets[@]}"; do
  corpus=$build/corpus/$target
  artifacts=$build/artifacts/$target
  log=$build/logs/$target.log
  mkdir -p "$corpus" "$artifacts" "$(dirname "$log")"
  for seed in "$top/fuzz/corpus/$target"/*; do
    [ -e "$corpus/$(basename "$seed")" ] || cp "$seed" "$corpus/"
  done
  echo "== $target: ${seconds}s"
  status=0
  "$build/fuzz/${target}_fuzzer" "$corpus" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="$artifacts/" -print_final_stats=1 >"$log" 2>&1 || status=$?
  execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  echo "   corpus: $(find "$corpus" -type f | wc -l) files, execs: ${execs:-?}, exit status: $status"
  if [ "$status" -ne 0 ]; then
    failed+=("$target")
    grep -m1 -E "ERROR|fuzz check failed|Test unit written" "$log" || true
    echo "   log: $log; artifacts: $artifacts/"
  fi
done

if [ ${#failed[@]} -gt 0 ]; then
  echo "Crashes found in: ${failed[*]}"
  exit 1
fi
