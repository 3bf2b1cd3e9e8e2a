#!/usr/bin/env bash
# Checks that the tracked C++ sources follow .clang-format, lists the files that
# do not and then exits non-zero:
#   scripts/check-format.sh         check only
#   scripts/check-format.sh --fix   reformat the listed files in place
# Fuzz corpora, fuzz regressions and docs/ are not checked.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
cd "$top"
case "${1:-}" in
  --fix | "") ;;
  *) echo "usage: $0 [--fix]" >&2; exit 2 ;;
esac

command -v clang-format >/dev/null || "$top/scripts/ensure-deps.sh" clang-format

mapfile -t files < <(git ls-files '*.h' '*.cpp' | grep -Ev '(^|/)(fuzz/corpus|fuzz/regressions|docs)/')
# One run over all files; each unformatted place is reported as
# "file:line:column: error: code should be clang-formatted".
out=$(clang-format --dry-run --Werror "${files[@]}" 2>&1) && exit 0
mapfile -t bad < <(sed -n 's/^\(.*\):[0-9]*:[0-9]*: error: code should be clang-formatted.*/\1/p' <<<"$out" | sort -u)
if [ ${#bad[@]} -eq 0 ]; then
  echo "$out" >&2
  exit 1
fi

printf '%s\n' "${bad[@]}"
if [ "${1:-}" = "--fix" ]; then
  clang-format -i "${bad[@]}"
  echo "reformatted ${#bad[@]} file(s)"
  exit 0
fi
echo "${#bad[@]} file(s) not formatted; scripts/check-format.sh --fix reformats them" >&2
exit 1
