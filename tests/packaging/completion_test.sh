#!/usr/bin/env bash
# completion_test.sh TARN PACKAGING: the completion offers what the program's own usage names, files
# by their kind, and the manual tells of all of it.
set -u
export LC_ALL=C
tarn=$1 packaging=$2 failures=0
PATH=${tarn%/*}:$PATH # the completion asks the program on the line
. "$packaging/completions/tarn"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
mkdir night 'two words'
touch a.JPG b.fits c.txt page.html sheet.pdf

offers() { # the line's words; the last one is being completed
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMPREPLY=()
    _tarn
    ((${#COMPREPLY[@]} == 0)) || printf '%s\n' "${COMPREPLY[@]}" | sort | tr '\n' ' '
}
expect() { # what is expected, then the words
    local wanted=$1 got
    shift
    got=$(offers "$@")
    [[ $got == "$wanted" ]] && return
    echo "$*: offered '$got', not '$wanted'"
    failures=$((failures + 1))
}

usage=$("$tarn" --help | sed 's/^usage:/      /')
commands=$(awk 'NR > 1 {print $2}' <<<"$usage" | sort -u)
[[ $commands ]] || failures=1
expect "$(printf '%s\n' --help --version $commands | sort | tr '\n' ' ')" tarn ''
while read -r _ command rest; do
    [[ $command == --help ]] && continue
    if ! grep -qx -- "\.B tarn $command\( data\)\?" "$packaging/man/tarn.1"; then
        echo "the manual does not know $command"
        failures=$((failures + 1))
    fi
    words=(tarn "$command")
    known='--help'
    if [[ $command == sheet ]]; then
        words+=("$(sed -E 's/^\(?(\w+).*/\1/' <<<"$rest")")
        known=
    fi
    options=$(grep -oE -- '--[a-z-]+' <<<"$rest")
    expect "$(printf '%s\n' $options $known | sort -u | tr '\n' ' ')" "${words[@]}" --
    for option in $options; do
        grep -qF -- "${option//-/\\-}" "$packaging/man/tarn.1" && continue
        echo "the manual does not know $option"
        failures=$((failures + 1))
    done
done <<<"$usage"

expect 'a.JPG b.fits night two words ' tarn info ''
expect 'a.JPG b.fits night two words ' tarn marks --csv ''
expect 'night two words ' tarn dates ''
expect 'night two words ' tarn convert --to ''
expect 'a.JPG ' tarn convert --to night --quality 80 a
expect '' tarn convert --text '' # free text
expect 'night page.html two words ' tarn page --set html_title = M31 --append ''
expect 'night two words ' tarn page --set html_title = M31 page.html ''
expect 'night sheet.pdf two words ' tarn sheet 3x4 --notes night ''
expect 'night two words ' tarn sheet 3x4 sheet.pdf ''
expect 'a.JPG b.fits night two words ' tarn sheet data sheet.pdf ''
expect '--help 2x2 3x4 4x6 5x8 data ' tarn sheet ''
expect 'b.fits ' tarn info -- b
expect '' tarn nonsense ''
expect '' tarn nonsense --
expect '--kept --no-print-notes --notes --now --paper --stars ' tarn sheet 3x4 --
expect '--notes --now --paper ' tarn sheet data --
exit $((failures > 0))
