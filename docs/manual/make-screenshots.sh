#!/usr/bin/env bash
# Makes the pictures of the manual anew: docs/manual/make-screenshots.sh [BUILD-FOLDER]
# It builds the program's scripted twin, draws a night's pictures, and works the windows under a
# screen and in a home of its own. Needs Xvfb, openbox, ImageMagick, rsvg-convert, ffmpeg, python3.
set -euo pipefail

cd "$(dirname "$0")/../.."
build=${1:-build/dev}
images=$PWD/docs/manual/images
# A short path, since the pictures show it.
work=/tmp/night
mkdir "$work" || { echo "make-screenshots.sh: $work is in the way" >&2; exit 1; }
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$work"' EXIT

cmake --build "$build" --target manual_shots
shots=$(realpath "$build")/manual_shots

night=$work/Pictures/2026-11-14
mkdir -p "$work"/{config/Tarn_View,run,shots} "$work"/Pictures/2026-{08-21,08-29,09-12,10-03,10-17,10-30}
mkdir "$work"/Pictures/{Planets,Sun,Timelapse,Wide}
chmod 700 "$work/run"
python3 docs/manual/make-pictures.py "$work/Pictures"
export HOME=$work XDG_CONFIG_HOME=$work/config XDG_STATE_HOME=$work/state XDG_DATA_HOME=$work/data
export XDG_CACHE_HOME=$work/cache XDG_RUNTIME_DIR=$work/run TZ=UTC LC_ALL=C.UTF-8
export QT_QPA_PLATFORM=xcb QT_STYLE_OVERRIDE=Fusion QT_QPA_PLATFORMTHEME=

exec 5>&1
Xvfb -displayfd 6 -screen 0 1280x800x24 6>"$work/display" 2>/dev/null &
until [ -s "$work/display" ]; do sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY
openbox 2>/dev/null &

# Sizes and places are kept in twips, 15 a pixel.
cat >"$work/config/Tarn_View/Tarn_View.ini" <<INI
[Defaults]
notes_folder=$work/Pictures/Notes
copy_folder=$work/Pictures/Best
main_width=16500
main_height=11100
splitter_top=3300
filedate_auto=False
slidebackground_index=1
print_to_file=True
print_preview=True
width1_value=12000
height1_value=7500
preview_width=11400
preview_height=11400
INI

# Lines for one start of the program.
run() { (cd "$work/shots" && "$shots" "$@"); }

run "$night/M31_0421.jpg" <<'LINES'
wait 1500
shot frmMain main.png
click FilesFilterButton2
text frmFilter/TextFilter *M31*
click frmFilter/CheckCustom
wait 600
shot frmFilter filter.png
close frmFilter
file M42_0431.jpg
click CommandNotesNew
wait 600
choose FrmNewNotes/ComboTelescope 2
text FrmNewNotes/ComboExp 18 x 120 s, 36 minutes
text FrmNewNotes/ComboDate 14-Nov-2026
click FrmNewNotes/CommandSetLine
wait 300
shot FrmNewNotes composer.png
close FrmNewNotes
file M31_0422.jpg
click AdjustButton
choose frmBrightness/BrightnessSlider 24
wait 400
shot frmBrightness brightness.png
click frmBrightness/CloseBrightnessButton
click FixPictureDateButton
wait 300
click frmDate/CopyButton
wait 300
shot frmDate date.png
close frmDate
click ConvertJpgSetText
wait 400
shot frmCaption convert.png
close frmCaption
click RenamePicturesButton
wait 600
text frmRenameFiles/RenameInputFilter M31_
text frmRenameFiles/RenameFilter Andromeda_
click frmRenameFiles/CheckAll
wait 500
shot frmRenameFiles rename.png
close frmRenameFiles
click VideoInWindowButton
file Jupiter_0443.ser
wait 1500
choose VideoSlider 17
wait 500
click VideoButton_5
wait 1000
shot frmMain video.png
LINES

run "$night/M31_L_0452.fits" <<'LINES'
wait 1500
shot frmMain fits.png
click StretchButton
wait 600
click frmStretch/LockStretchCheck
wait 400
shot frmStretch stretch.png
LINES

run "$night/M31_0421.jpg" <<'LINES'
wait 1500
click VCheck
click OneToOneButton
wait 1200
shot frmOnetoOne one_to_one.png
key frmOnetoOne Esc
wait 300
click SlidesC2Button
wait 1500
key frmSlideShow N
wait 1000
shot frmSlideShow compare.png
key frmSlideShow Esc
wait 800
click Slides4Button
wait 2000
shot frmSlideShow four.png
key frmSlideShow Esc
wait 800
file Ridge_0401.jpg
click SlideButton
wait 1500
shot frmSlideShow show.png
key frmSlideShow Esc
wait 800
LINES

run "$night/M31_0421.jpg" <<'LINES'
wait 1500
click VCheck
click PrintCButton
wait 1000
accept
wait 4000
shot frmPrintPreview sheet_preview.png
close frmPrintPreview
click CreateAppendHtmlFile
wait 500
click frmHtmlLayout/CreateButton_1
wait 800
answer /tmp/night/Pictures/2026-11-14/night.html
wait 600
shot frmHtmlLayout html_form.png
close frmHtmlLayout
click GenerateThumbButton
wait 3000
click HtmlThumbButton
wait 800
answer /tmp/night/Pictures/2026-11-14/index.html
wait 1500
shot frmHtmlThumb gallery_form.png
close frmHtmlThumb
LINES

sed -i 's/^splitter_top=.*/splitter_top=1200/' "$work/config/Tarn_View/Tarn_View.ini"
run "$night/M31_0421.jpg" <<'LINES'
wait 1500
click ListPicturesButton
wait 2000
shot ListSide list_pictures.png
LINES

# A palette keeps them small.
mkdir -p "$images"
rm -f "$images"/*.png
for shot in "$work"/shots/*.png; do
  convert "$shot" -resize '1120x>' -dither FloydSteinberg -colors 256 -strip -define png:compression-level=9 \
    -define png:exclude-chunk=date,time "PNG8:$images/$(basename "$shot")"
done
du -bsh "$images" >&5
