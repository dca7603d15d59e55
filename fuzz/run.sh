#!/bin/sh
# Fuzzes each reader of foreign bytes for SECONDS (20 minutes unless told), JOBS at a time, and prints
# one line a target: runs, new inputs, findings. What was found stays beside the log in build/fuzz.
#   fuzz/run.sh [SECONDS] [JOBS]
set -eu
cd "$(dirname "$0")/.."
seconds=${1:-1200}
jobs=${2:-2}
out=build/fuzz

option() { sed -n "/^tarn_fuzz($1 /s/.*$2 \([0-9]*\).*/\1/p" fuzz/CMakeLists.txt; }

one() {
    mkdir -p "$out/found/$1"
    status=clean
    # Modules have parts of the program in them, too.
    QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_odr_violation=0 "$out/${1}_fuzz" -max_total_time="$seconds" -timeout=10 \
        -max_len="$(option "$1" MAX_LEN)" -malloc_limit_mb="0$(option "$1" MALLOC_MB)" \
        -print_final_stats=1 -artifact_prefix="$out/finding-$1-" \
        "$out/found/$1" "fuzz/corpus/$1" >"$out/$1.log" 2>&1 || status=FOUND
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$out/$1.log")
    new=$(sed -n 's/^stat::new_units_added: *//p' "$out/$1.log")
    echo "$1: $seconds s, ${runs:-?} runs, ${new:-?} new inputs, $status"
    [ "$status" = clean ]
}

if [ "${TARN_FUZZ_ONE:-}" ]; then
    one "$TARN_FUZZ_ONE"
    exit
fi
targets=$(sed -n 's/^tarn_fuzz(\([a-z_]*\) .*/\1/p' fuzz/CMakeLists.txt)
cmake --preset fuzz >/dev/null
# shellcheck disable=SC2046
cmake --build --preset fuzz --target $(for name in $targets; do echo "${name}_fuzz"; done) >/dev/null
echo "$targets" | xargs -P "$jobs" -I NAME env TARN_FUZZ_ONE=NAME "$0" "$seconds"
