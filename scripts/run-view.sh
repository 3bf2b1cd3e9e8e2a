#!/usr/bin/env bash
# Builds the library and starts the interactive view: on the built-in sample
# chart, or on the chart file and/or CSV file given (see --help).
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/build.sh" "$top/build"
exec "$top/build/examples/kelview/kelview" "$@"
