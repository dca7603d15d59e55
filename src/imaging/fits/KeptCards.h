// Lines of FITS headers that what is made of a file takes over, or is known by.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// Those lines that say of the picture of this number, from 0, what was seen, from where, when and
// by what: object, place in the sky and on the plate, site, exposure, instrument. Not the date, nor
// what its samples are stored like, nor what a program wrote into it at length. Of a picture behind
// the first header its own, and what the first one has besides. Empty of another kind of file, or
// one that is packed.
std::vector<std::string> CardsOfFrame(const std::string& path, int image);

// Whether a FITS file's first header says that it is the mean of frames, and made by this program.
inline constexpr std::string_view kCreator = "Tarn View";
bool IsSumOfFrames(const std::string& path);

} // namespace tarn
