#!/usr/bin/env bash
# A random user under the address and undefined-behaviour sanitizers: bench/monkey.sh [SEED [ACTS]].
# Prints seed, acts of each kind, time, and what was found; a run is replayed by its seed.
set -euo pipefail
cd "$(dirname "$0")/.."
seed=${1:-$RANDOM}
acts=${2:-20000}
cmake --preset sanitize >/dev/null
cmake --build --preset sanitize --target monkey_test
log=build/sanitize/monkey-$seed.log
export QT_QPA_PLATFORM=offscreen LSAN_OPTIONS="suppressions=$PWD/tools/leaks.supp:print_suppressions=0"
began=$SECONDS
status=0
build/sanitize/monkey_test --seed "$seed" --acts "$acts" --log "$log" --go-on || status=$?
echo "seed $seed, $(tail -n 1 "$log" | cut -d' ' -f1) of $acts acts, $((SECONDS - began)) s, log $log"
grep -F ' FOUND ' "$log" || echo 'nothing found'
[ "$status" = 0 ] || { echo 'the last acts:'; tail -n 5 "$log"; }
exit "$status"
