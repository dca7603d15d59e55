#!/bin/sh
# Makes every companion file of the program anew in the folder above this one.
set -eu

here=$(CDPATH='' cd -- "$(dirname -- "$0")" && pwd)
data=${1:-$(dirname "$here")}
export LC_ALL=C PYTHONDONTWRITEBYTECODE=1

for tool in python3 rsvg-convert convert fc-match; do
  command -v "$tool" >/dev/null || { echo "make_data.sh: $tool is needed" >&2; exit 1; }
done
# Another font would change the words on the placeholders without a word.
case $(fc-match 'DejaVu Sans') in
  DejaVuSans.ttf*) ;;
  *) echo "make_data.sh: the font DejaVu Sans is needed" >&2; exit 1 ;;
esac

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$data/icons"

python3 "$here/splash.py" "$data/splash.png"
python3 "$here/sounds.py" "$data"
python3 "$here/icons.py" "$data/icons"

python3 "$here/placeholders.py" "$scratch"
for name in FITS_image Canon_raw MP4 No_image; do
  rsvg-convert "$scratch/$name.svg" -o "$scratch/$name.png"
  convert "$scratch/$name.png" -strip -colorspace sRGB -type TrueColor -interlace none \
    -sampling-factor 1x1 -quality 90 "JPEG:$data/$name.jpg"
done

rsvg-convert "$here/delete.svg" -o "$scratch/delete.png"
convert "$scratch/delete.png" -strip "ICO:$data/delete.ico"
