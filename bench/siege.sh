#!/usr/bin/env bash
# Steps through broken pictures while their decoder processes are killed, stopped and starved:
# bench/siege.sh [STEPS [SEED [FILES]]]. Prints how long the window took to answer; none may be over 50 ms.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset release >/dev/null
cmake --build --preset release --target siege_test tarn-decoder
QT_QPA_PLATFORM=offscreen build/release/siege_test --steps "${1:-10000}" --seed "${2:-$RANDOM}" \
    --files "${3:-3000}" --answer 50
