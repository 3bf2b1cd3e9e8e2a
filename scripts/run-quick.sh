#!/usr/bin/env bash
# Builds the chart item and starts the Qt Quick example: on the built-in
# sample chart, or on the CSV or chart file given (see --help; --screenshot
# FILE writes the window after its first frame and quits).
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/ensure-deps.sh"
cmake -S "$top" -B "$top/build" -G Ninja >/dev/null
cmake --build "$top/build" -j "$(nproc)" --target kelquick
# Without a display: the offscreen platform, drawn by the software scene graph.
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
  export QT_QUICK_BACKEND=${QT_QUICK_BACKEND:-software}
fi
exec "$top/build/examples/kelquick/kelquick" "$@"
