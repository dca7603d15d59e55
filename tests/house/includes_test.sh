#!/usr/bin/env bash
# includes_test.sh SRC: an include goes down the floors of docs/ARCHITECTURE.md, never up, never
# sideways from one room into another. A folder belongs to the longest name here that begins it.
set -u
export LC_ALL=C
cd "$1" || exit 1
grep -rnE '^ *# *include *"[^"]+/' --include='*.h' --include='*.cpp' . | awk '
BEGIN {
    floor = 0
    Floor("common/")
    Floor("sky/stars/")
    Floor("sky/align/")
    Floor("sky/judging/")
    Floor("sky/frames/")
    Floor("sky/stack/")
    Floor("sky/movers/")
    Floor("platform/")
    Floor("sky/place/")
    Floor("history/")
    Floor("decoder/")
    Floor("imaging/ clips/")
    Floor("decoder/program/")
    Floor("sky/clips/ sky/planes/ sky/measures/ sky/headers/")
    Floor("sky/report/ sky/series/")
    Floor("widgets/")
    Floor("pictureinfo/")
    Floor("convert/ facts/")
    Floor("sky/night/ sky/paper/")
    Floor("desk/state/")
    Floor("desk/settings/ desk/commands/ desk/controls/ desk/places/")
    Floor("desk/")
    Floor("desk/batch/")
    Floor("navigation/ display/ panel/ fileops/ night/ blink/ notes/ marks/ slides/ thumbnails/ print/ web/ video/ follow/")
    Floor("app/help/ app/logs/ app/about/ app/outside/ console/")
    Floor("app/window/")
    Floor("app/start/")
    Floor("app/")
}
function Floor(folders,    each, i, n) {
    n = split(folders, each, " ")
    for (i = 1; i <= n; i++) floors[each[i]] = floor
    floor++
}
function HomeOf(file,    home, each) {
    home = ""
    for (each in floors)
        if (index(file, each) == 1 && length(each) > length(home)) home = each
    return home
}
{
    split(substr($0, 3), place, ":")
    match($0, /"[^"]+"/)
    target = substr($0, RSTART + 1, RLENGTH - 2)
    from = HomeOf(place[1])
    to = HomeOf(target)
    seen++
    if (from != "" && to != "" && (from == to || floors[to] < floors[from])) next
    print place[1] ":" place[2] ": " target (from == "" || to == "" ? " stands on no floor" : "")
    faults++
}
END { exit seen == 0 || faults > 0 }'
