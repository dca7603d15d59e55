#!/usr/bin/env bash
# Files made to fill the memory or to keep their reader busy (bench/limits/make_bombs.py), each read
# in a program of its own by the console, small as for the list, and with all pixels; beside two
# thumbnailers. Prints time and peak memory of each, and at the end what is over the limits.
#   bench/limits.sh BUILD-FOLDER [FOLDER]   the build with -DTARN_BENCH=ON; FOLDER keeps the files
set -euo pipefail
build=$(cd "${1:?usage: limits.sh BUILD-FOLDER [FOLDER]}" && pwd)
folder=${2:-}
cd "$(dirname "$0")"
if [ -z "$folder" ]; then
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
fi
[ -e "$folder/socket.jpg" ] || python3 limits/make_bombs.py "$folder"
QT_QPA_PLATFORM=offscreen PYTHONDONTWRITEBYTECODE=1 python3 limits/run.py "$build" "$folder"
