#!/usr/bin/env bash
# Configures and builds into a build folder: scripts/build.sh [BUILD_DIR] [extra cmake options...]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$top/build}
shift || true
"$top/scripts/ensure-deps.sh"
cmake -S "$top" -B "$build" -G Ninja "$@" >/dev/null
cmake --build "$build" -j "$(nproc)"
