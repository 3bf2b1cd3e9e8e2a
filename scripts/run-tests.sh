#!/usr/bin/env bash
# Builds and runs the whole test suite:
#   scripts/run-tests.sh              in build/ (Qt 5)
#   scripts/run-tests.sh --sanitize   AddressSanitizer + UndefinedBehaviorSanitizer, in build-sanitize/
#   scripts/run-tests.sh --qt6        against Qt 6, in build-qt6/
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
case "${1:-}" in
  --sanitize)
    build=$top/build-sanitize
    "$top/scripts/build.sh" "$build" -DORV_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug
    export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
    export LSAN_OPTIONS=suppressions=$top/scripts/lsan.supp:print_suppressions=0
    ;;
  --qt6)
    build=$top/build-qt6
    "$top/scripts/ensure-deps.sh" qt6-base-dev qt6-svg-dev qt6-declarative-dev qml6-module-qtquick qml6-module-qtquick-window \
        qml6-module-qtquick-controls qml6-module-qtquick-templates qml6-module-qtquick-layouts qml6-module-qtquick-dialogs \
        qml6-module-qtqml-workerscript qml6-module-qt-labs-platform qml6-module-qt-labs-folderlistmodel
    "$top/scripts/build.sh" "$build" -DORV_QT_MAJOR=6 -DORV_BUILD_BENCHMARKS=OFF
    ;;
  "")
    build=$top/build
    "$top/scripts/build.sh" "$build"
    ;;
  *)
    echo "usage: $0 [--sanitize | --qt6]" >&2
    exit 2
    ;;
esac
cd "$build"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$(nproc)"
