// The plane that is measured of a picture file, whatever its kind.
#pragma once

#include "imaging/fits/FitsSamples.h"
#include "sky/stars/ValuePlane.h"

#include <optional>
#include <string>
#include <vector>

namespace tarn {

struct PictureValues {
    int width = 0; // pixels of the picture
    int height = 0;
    ValuePlane plane;      // a view of what is kept below; stays right when this is moved
    bool bottomUp = false; // the first stored row is shown as the bottom one
    std::string imageType; // as the header has it: "Light Frame"
    std::string filter;
    std::string exposure; // seconds, as written

    FitsSamples samples;
    std::vector<std::uint16_t> words;
    std::vector<float> floats;
};

// Any thread. Of colour 0.25 red + 0.5 green + 0.25 blue, of a mosaic the mean of each cell.
//
// FITS and XISF: physical values in the order of the file, NaN where there are none. Raw: the
// sensor's numbers less its black level. SER: its first frame, 0 to 65535. All others: linear light
// of the picture in the colours of the screen, 0 to 65535, from 8 bits of each colour; the order is
// that of the file, upright where its reader turns it.
//
// None with an error ("No such file or directory", "The file ends too early", ...): part of a
// picture is not measured.
std::optional<PictureValues> ReadPictureValues(const std::string& path, std::string& error);

// The same, but what has colours keeps them apart: of FITS, XISF and raw files, and clips that are
// mosaics, `plane` is a view of the first one, and the header of `samples` says how many planes or
// which mosaic there are, with the plane's zero and scale.
std::optional<PictureValues> ReadPictureColours(const std::string& path, std::string& error);

} // namespace tarn
