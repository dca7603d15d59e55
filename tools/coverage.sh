#!/usr/bin/env bash
# Which lines of src the tests reach, folder by folder: builds with counters in build/coverage, runs
# every test and prints a line a folder; the page of all files is build/coverage/lines.html.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v gcovr >/dev/null || { echo 'gcovr is not installed (apt install gcovr)' >&2; exit 2; }
cmake --preset dev -B build/coverage -DTARN_PCH=OFF -DCMAKE_CXX_FLAGS='--coverage -O0' \
    -DCMAKE_EXE_LINKER_FLAGS=--coverage -DCMAKE_MODULE_LINKER_FLAGS=--coverage >/dev/null
cmake --build build/coverage
find build/coverage -name '*.gcda' -delete
QT_QPA_PLATFORM=offscreen ctest --test-dir build/coverage -j "$(nproc)" --output-on-failure
gcovr --root . --filter src/ --csv build/coverage/lines.csv --html build/coverage/lines.html \
    build/coverage
awk -F, 'NR > 1 { n = split($1, part, "/"); folder = part[1] "/" part[2]; all[folder] += $2; hit[folder] += $3 }
    END { for (f in all) printf "%-20s %6d lines %5.1f %%\n", f, all[f], 100 * hit[f] / all[f] }' \
    build/coverage/lines.csv | sort
