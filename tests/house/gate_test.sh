#!/usr/bin/env bash
# gate_test.sh SRC: files of others come in by platform/OpenRegular alone, are not read without a
# limit, and threads begin where what is thrown on them is caught. What is named here reads what is
# the program's own, writes, or is that place itself.
set -u
export LC_ALL=C
cd "$1" || exit 1
[ -f platform/OpenRegular.cpp ] || exit 1
faults=0

# forbid PATTERN FILE...: only in these files.
forbid() {
    local pattern=$1
    shift
    local found
    found=$(grep -rnE "$pattern" --include='*.cpp' --include='*.h' . | grep -vE '^[^:]*:[0-9]+: *//' |
        grep -vE "^\./($(IFS='|' && echo "$*")):")
    [ -z "$found" ] && return
    echo "$found"
    faults=1
}

forbid '\b(fopen|freopen|gzopen|fits_open_file)\(|\bstd::(i?fstream|filebuf)\b' none
forbid '\bQFile [a-z]+\(' app/help/frmHelp.cpp desk/controls/Icons.cpp platform/Desktop.cpp
forbid '\bO_RDONLY\b' \
    platform/OpenRegular.cpp platform/Wastebasket.cpp platform/Staging.cpp platform/FreeNames.cpp
forbid '\breadAll\(|\bSIZE_MAX\b|numeric_limits<std::size_t>::max' \
    app/SecondStart.cpp app/help/frmHelp.cpp desk/controls/Icons.cpp
forbid '\bstd::j?thread [a-z]|\bstd::j?thread\(|vector<std::j?thread>|\bQThread::create|QtConcurrent|\bpthread_create' \
    common/worker.h imaging/fits/TwoThreads.h
forbid 'std::async\(' clips/MpvPlayer.cpp web/GalleryRun.cpp
forbid 'QImageReader|QMovie|QSvgRenderer' \
    imaging/ToolkitFormat.cpp decoder/program/Answers.cpp thumbnails/SharedCache.cpp desk/controls/Icons.cpp \
    sky/paper/ReportSheet.cpp
exit $faults
