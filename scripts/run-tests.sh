#!/usr/bin/env bash
# Builds and runs the whole test suite. With --sanitize, builds with
# AddressSanitizer + UndefinedBehaviorSanitizer in build-sanitize/ instead.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
if [ "${1:-}" = "--sanitize" ]; then
  build=$top/build-sanitize
  "$top/scripts/build.sh" "$build" -DORV_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug
  export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
else
  build=$top/build
  "$top/scripts/build.sh" "$build"
fi
cd "$build"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$(nproc)"
