#!/usr/bin/env bash
# current_file_test.sh SRC: the current file of the desk and its kind are set by their owner alone.
set -u
export LC_ALL=C
cd "$1" || exit 1
[ -f desk/state/CurrentFile.h ] || exit 1
! grep -rnE '(\bs|state)\.(Filename|FileNameOnly|FileType|Kind)(\.clear\(\)| = )' \
    --include='*.cpp' --include='*.h' . | grep -v '^\./desk/state/CurrentFile\.h:'
