#!/usr/bin/env bash
# Builds the benchmarks in Release (build-bench/), runs them and prints the ratio table.
#   scripts/run-benchmarks.sh [--peers] [--build-only] [benchmark options...]
# --peers also installs and measures Qwt and QCustomPlot. --build-only stops
# after building (CI builds the peers that way, so that they cannot rot). The
# JSON report is kept in build-bench/benchmarks.json.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=$top/build-bench
peers=OFF
run=yes
while [ $# -gt 0 ]; do
  case "$1" in
    --peers) peers=ON ;;
    --build-only) run=no ;;
    *) break ;;
  esac
  shift
done

extra=(python3)
[ "$peers" = ON ] && extra+=(libqwt-qt5-dev libqcustomplot-dev)
"$top/scripts/ensure-deps.sh" "${extra[@]}"

cmake -S "$top" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DORV_BENCH_PEERS="$peers" >/dev/null
cmake --build "$build" -j "$(nproc)" --target orv-benchmarks
[ "$run" = yes ] || exit 0
echo "Running the benchmarks (several minutes)..." >&2
QT_QPA_PLATFORM=offscreen "$build/benchmarks/orv-benchmarks" --benchmark_format=json \
  --benchmark_repetitions=5 --benchmark_report_aggregates_only=true "$@" > "$build/benchmarks.json"
python3 "$top/benchmarks/ratios.py" "$build/benchmarks.json"
