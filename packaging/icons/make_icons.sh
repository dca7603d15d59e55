#!/usr/bin/env bash
# Draws the icon's sizes; needs rsvg-convert (librsvg2-bin). Small sizes have drawings of their own,
# with fewer details that fall on whole pixels.
set -euo pipefail
cd "$(dirname "$0")"
draw() { rsvg-convert -w "$2" -h "$2" "$1" -o "tarn-view-$2.png"; }
draw tarn-view-16.svg 16
draw tarn-view-22.svg 22
# The same drawing with a pixel around it.
rsvg-convert --page-width 24 --page-height 24 --left 1 --top 1 tarn-view-22.svg -o tarn-view-24.png
for size in 32 48 64 128 256; do draw tarn-view.svg "$size"; done
