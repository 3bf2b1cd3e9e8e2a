#!/usr/bin/env bash
# Installs the plain build into a scratch prefix, then builds and runs the
# consumer project in tests/consumer against it through find_package(OrvChart).
#   scripts/check-install.sh [BUILD_DIR]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$top/build}
prefix=$top/build-install/prefix
consumer=$top/build-install/consumer
"$top/scripts/build.sh" "$build"
rm -rf "$prefix" "$consumer"
cmake --install "$build" --prefix "$prefix" >/dev/null
echo "installed into $prefix:"
(cd "$prefix" && find . -type f | sort | sed -n '1,200p' | awk '{ n++ } END { print "  " n " files" }')
cmake -S "$top/tests/consumer" -B "$consumer" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$consumer"
cd "$consumer"
ctest --output-on-failure
"$consumer/consumer"
