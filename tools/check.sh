#!/usr/bin/env bash
# Everything before a release: the tests, and again under the sanitizers, the parts with threads under
# the thread sanitizer, a minute of fuzzing for each reader, formatting and linter.
#   tools/check.sh [FUZZ_SECONDS]
set -uo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
export QT_QPA_PLATFORM=offscreen
status=0

step() {
    name=$1
    shift
    log=build/check-${name// /-}.log
    mkdir -p build
    if "$@" >"$log" 2>&1; then
        echo "$name: clean"
    else
        status=1
        echo "$name: NOT clean, see $log"
    fi
}

preset() {
    cmake --preset "$1" && cmake --build --preset "$1" &&
        ctest --preset "$1" -j "$(nproc)" "${@:2}"
}

step tests ./test.sh
step sanitizers preset sanitize
step 'thread sanitizer' preset threads
step fuzzing fuzz/run.sh "$seconds" "$(nproc)"
step lint tools/lint.sh
exit "$status"
