#!/usr/bin/env bash
# The form of the code, and what the linter finds in it:
#   tools/lint.sh --format      formatting alone, of every file
#   tools/lint.sh [FILE...]     that, and clang-tidy over the files given (all, when none is)
set -euo pipefail
cd "$(dirname "$0")/.."
command -v clang-format >/dev/null || { echo 'clang-format is not installed' >&2; exit 2; }
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
echo 'formatting: clean'
[ "${1:-}" != --format ] || exit 0

# Without the headers that are read once: they are another compiler's.
cmake --preset dev -B build/lint -DTARN_PCH=OFF >/dev/null
cmake --build build/lint --target tarn_widgets_autogen tarn_window_autogen >/dev/null
if [ $# -gt 0 ]; then files=("$@"); else mapfile -t files < <(git ls-files 'src/*.cpp' 'tests/*.cpp'); fi
status=0
found=$(printf '%s\n' "${files[@]}" |
    xargs -P "$(nproc)" -n 4 clang-tidy -p build/lint --quiet 2>/dev/null) || status=1
printf '%s\n' "$found" | grep -E '(error|warning):' | sort -u || true
[ "$status" = 0 ] && echo "clang-tidy: ${#files[@]} files clean"
exit "$status"
