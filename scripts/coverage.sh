#!/usr/bin/env bash
# Builds with gcov instrumentation in build-coverage/, runs the whole test suite and prints the line
# coverage of every library, per file and in total. Exits non-zero when the chart library or any of
# the host-side libraries (property model, data import, painter, view logic, widgets, Qt Quick item)
# is below the gate (GATE,
# default 90 percent).
#   scripts/coverage.sh            # report and gate
#   GATE=92 scripts/coverage.sh    # a stricter gate
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=$top/build-coverage
gate=${GATE:-90}
jobs=$(nproc)
cd "$top"

"$top/scripts/ensure-deps.sh"
cmake -S "$top" -B "$build" -G Ninja -DORV_COVERAGE=ON -DCMAKE_BUILD_TYPE=Debug \
  -DORV_BUILD_BENCHMARKS=OFF >/dev/null
cmake --build "$build" -j "$jobs"

# Counters accumulate across runs; start from zero so the numbers describe this run only.
find "$build" -name '*.gcda' -delete
# The run's full log is kept; only its summary is shown. A failing test still gets its coverage
# reported, but fails the script.
log=$build/coverage-tests.log
status=0
if ! (cd "$build" && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs") >"$log" 2>&1; then
  status=1
fi
sed -n '/tests passed/,$p' "$log"

# gcov must match the compiler that wrote the counters: gcov-12 for g++ 12.
cxx=$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$build/CMakeCache.txt")
gcov=gcov-$("$cxx" -dumpversion | cut -d. -f1)
command -v "$gcov" >/dev/null || gcov=gcov

# Paths are relative to the repository root. Tests, the example host, benchmarks and fuzz
# targets live outside these folders or in autotests/, so they never count as covered code.
# gcovr merges the counts of an inline header seen by several translation units.
summary=$build/coverage-summary.json
gcovr --root "$top" --object-directory "$build" --gcov-executable "$gcov" -j "$jobs" \
  --filter 'OrvDebug/' --filter 'CppMath/' --filter 'UI\.Graphics/' \
  --exclude '.*/autotests/' \
  --txt - --json-summary "$summary"

# Totals per module, then the gate on the chart library alone, summed from the summary just written.
if ! python3 - "$summary" "$gate" <<'EOF'
import json, sys
summary, gate = sys.argv[1], float(sys.argv[2])
files = json.load(open(summary))["files"]

def percent(prefix):
    chosen = [f for f in files if f["filename"].startswith(prefix)]
    total = sum(f["line_total"] for f in chosen)
    covered = sum(f["line_covered"] for f in chosen)
    # Rounded as printed, so that the verdict never contradicts the number shown.
    return round(100.0 * covered / total, 1) if total else 0.0, covered, total

gated = ("UI.Graphics/Chart/", "UI.Graphics/ChartProperties/", "UI.Graphics/ChartIO/",
         "UI.Graphics/ChartPainter/", "UI.Graphics/ChartView/", "UI.Graphics/ChartWidgets/",
         "UI.Graphics/ChartQuick/")
failed = []
for module in ("OrvDebug/", "CppMath/", "UI.Graphics/Core/") + gated:
    value, covered, total = percent(module)
    own = gate
    verdict = (("passes" if value >= own else "FAILS") + f" (gate {own:g}%)") if module in gated else ""
    print(f"{module:<30} {covered:>5} of {total:>5} lines  {value:5.1f}%  {verdict}")
    if module in gated and value < own:
        failed.append(module)
print("coverage gates: " + ("FAIL for " + ", ".join(failed) if failed else "pass"))
sys.exit(1 if failed else 0)
EOF
then
  status=1
fi
grep -q '^100% tests passed' "$log" || echo "Some tests failed: see $log" >&2
exit "$status"
