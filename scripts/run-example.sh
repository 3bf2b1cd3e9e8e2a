#!/usr/bin/env bash
# Builds the library and runs the main job: the example host on its built-in sample chart.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/build.sh" "$top/build"
QT_QPA_PLATFORM=offscreen "$top/build/examples/kelchart/kelchart" "$@"
