#!/bin/sh
# Every call of the outside fails once in turn, in every command; full disks; kills at random
# instants. Usage: faults.sh BUILD-FOLDER (made with -DTARN_BENCH=ON). A full disk of its own (8 MB)
# is tried too where mounting is allowed.
set -u
build=${1:?usage: faults.sh BUILD-FOLDER}
export QT_QPA_PLATFORM=offscreen
status=0
report=$(mktemp)

sweep() { # title, filter
    "$build/fault_test" --gtest_filter="$2" >"$report" 2>/dev/null || status=1
    grep -E "^    (untold|FAULT)" "$report"
    awk -v title="$1" '/^TOTAL/ { commands += $2; calls += $4; told += $7; harmless += $9
                                  untold += $11; faults += $13 }
        END { printf "%-28s %3d commands, %4d calls fail, %4d told, %4d harmless, %d untold, %d lost or half\n",
                     title, commands, calls, told, harmless, untold, faults }' "$report"
}

sweep "changes of the disk" "*Change*"
sweep "questions to the disk" "*Ask*"
sweep "settings store" "*Settings*"
sweep "readers of pictures" "*Open*"
sweep "full disk (limit of files)" "*Full*"
disk=$(mktemp -d)
if mount -t tmpfs -o size=8m tarn-full "$disk" 2>/dev/null; then
    TMPDIR=$disk sweep "full disk (one of its own)" "*Full*"
    umount "$disk"
else
    echo "full disk (one of its own): not tried, mounting is not allowed"
fi
rmdir "$disk"
"$build/kill_saves" || status=1
rm -f "$report"
exit $status
