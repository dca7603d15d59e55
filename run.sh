#!/usr/bin/env bash
# Installs what is missing, builds the program and starts it: ./run.sh [PATH]
set -euo pipefail
given=${1:-}
[ -z "$given" ] || given=$(realpath -s -- "$given")
cd "$(dirname "$0")"
. tools/packages.sh
# shellcheck disable=SC2086
tarn_install $tarn_build_packages $tarn_run_packages
cmake --preset release -B build/run -DTARN_BENCH=OFF -DTARN_TESTS=OFF
cmake --build build/run
exec build/run/tarn-view ${given:+"$given"}
