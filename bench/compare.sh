#!/usr/bin/env bash
# Every work of this program beside other programs that do the same, and beside the bare program that
# does no more: installs them, runs all in one run and writes docs/PERFORMANCE.md. Takes about half an
# hour; nothing else should run meanwhile.
#   bench/compare.sh [DOCUMENT [WORK...]]   WORK as in compare.py: its section alone is measured anew
set -euo pipefail
cd "$(dirname "$0")/.."
out=${1:-docs/PERFORMANCE.md}
shift || true
. tools/packages.sh
# shellcheck disable=SC2086
tarn_install $tarn_build_packages $tarn_run_packages $tarn_test_packages libbenchmark-dev xvfb openbox \
    dbus python3-numpy libxtst6 libvips-tools imagemagick exiv2 jhead libimage-exiftool-perl geeqie \
    gthumb gwenview llgal fgallery liblcms2-utils
cmake --preset release >/dev/null
cmake --build --preset release --target benches >/dev/null
work=$(mktemp -d "${TMPDIR:-/tmp}/compare.XXXXXX")
mkdir -p "$work/openbox"
cat >"$work/openbox/rc.xml" <<RC
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <applications><application type="normal"><maximized>yes</maximized></application></applications>
</openbox_config>
RC
Xvfb :97 -screen 0 1600x1000x24 -nolisten tcp 2>/dev/null &
screen=$!
trap 'kill $screen; rm -rf "$work"' EXIT INT TERM
export DISPLAY=:97
sleep 2
openbox --config-file "$work/openbox/rc.xml" 2>/dev/null &
sleep 1
PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 bench/compare/compare.py "$PWD/build/release" "$work" "$out" "$@"
