#!/usr/bin/env bash
# Builds the benchmarks in Release (build-bench/), runs them and prints the ratio table.
#   scripts/run-benchmarks.sh [--peers] [benchmark options...]
# --peers also installs and measures Qwt and QCustomPlot. The JSON report is kept in
# build-bench/benchmarks.json.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=$top/build-bench
peers=OFF
if [ "${1:-}" = "--peers" ]; then
  peers=ON
  shift
fi

"$top/scripts/ensure-deps.sh"
needed=(python3)
[ "$peers" = ON ] && needed+=(libqwt-qt5-dev libqcustomplot-dev)
missing=()
for p in "${needed[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}" >/dev/null
fi

cmake -S "$top" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DORV_BENCH_PEERS="$peers" >/dev/null
cmake --build "$build" -j "$(nproc)" --target orv-benchmarks
echo "Running the benchmarks (several minutes)..." >&2
QT_QPA_PLATFORM=offscreen "$build/benchmarks/orv-benchmarks" --benchmark_format=json \
  --benchmark_repetitions=5 --benchmark_report_aggregates_only=true "$@" > "$build/benchmarks.json"
python3 "$top/benchmarks/ratios.py" "$build/benchmarks.json"
