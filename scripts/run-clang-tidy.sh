#!/usr/bin/env bash
# Runs clang-tidy with the checked-in .clang-tidy over the chart library and,
# unless --chart-only is given, over every other library: the debug, math and
# core modules, the property model, data import, painter and widgets.
# Exits non-zero on any finding. The build folder is build-tidy/ unless
# BUILD_DIR names another; JOBS sets the parallel runs (default 2).
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$top/build-tidy}
jobs=${JOBS:-2}

"$top/scripts/ensure-deps.sh" clang-tidy

# Configuring writes compile_commands.json and the generated export headers,
# which is all clang-tidy needs; nothing is compiled.
cmake -S "$top" -B "$build" -G Ninja -DORV_BUILD_BENCHMARKS=OFF -DORV_BUILD_TESTS=OFF -DORV_BUILD_EXAMPLES=OFF >/dev/null
# moc's output is generated, not configured: build the widgets' autogen step so their sources parse.
cmake --build "$build" --target Orv.UI.Graphics.ChartWidgets_autogen Orv.UI.Graphics.ChartProperties_autogen \
  Orv.UI.Graphics.ChartView_autogen Orv.UI.Graphics.ChartQuick_autogen >/dev/null

# run-clang-tidy takes regexes matched against the compile database's paths.
modules='UI\.Graphics/Chart'
[ "${1:-}" = "--chart-only" ] ||
  modules='UI\.Graphics/(Chart|ChartIO|ChartPainter|ChartView|ChartWidgets|ChartQuick|ChartProperties|Core)|OrvDebug|CppMath'
sources="^$top/($modules)/[^/]*\.cpp\$"

start=$(date +%s)
status=0
run-clang-tidy -quiet -p "$build" -j "$jobs" -extra-arg=-Wno-unknown-warning-option "$sources" \
  || status=$?
echo "clang-tidy took $(( $(date +%s) - start )) s"
if [ "$status" -ne 0 ]; then
  echo "clang-tidy reported findings" >&2
fi
exit "$status"
