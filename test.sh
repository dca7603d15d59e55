#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh
# shellcheck disable=SC2086
tarn_install $tarn_build_packages $tarn_run_packages $tarn_test_packages
cmake --preset dev
cmake --build --preset dev
export QT_QPA_PLATFORM=offscreen
ctest --preset dev -j "$(nproc)"
