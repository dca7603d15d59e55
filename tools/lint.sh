#!/usr/bin/env bash
# Checks the form of the code: clang-format on every file, clang-tidy on the files given (all, when
# none is). Needs a configured dev build.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
if [ $# -gt 0 ]; then files=("$@"); else mapfile -t files < <(git ls-files 'src/*.cpp' 'tests/*.cpp'); fi
printf '%s\n' "${files[@]}" | xargs -P "$(nproc)" -n 4 clang-tidy -p build/dev --quiet 2>/dev/null
