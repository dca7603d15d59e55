// The samples of a picture as its file has them, for what measures them: nothing is stretched,
// turned, balanced or made light of. FITS, XISF and raw files have such.
#pragma once

#include "imaging/fits/FitsSamples.h"

#include <optional>
#include <string>

namespace tarn {

// Any thread; read by the decoder process, whose memory they stay in.
//
// Size: `header.width` x `header.height` pixels, plane after plane, row after row in the order of
// the file, which begins at the top where `header.topDown`. Of raw files one plane: the part of the
// sensor that is the picture, as it was held, not upright.
//
// Values: zero + scale * word, of 0 to 65535, or the float itself, NaN where there is none; in the
// file's own units (counts of the converter in raw and most FITS files; 0 to 1 in most that a
// program has worked on). `range` says what is black and white, where the file does: of raw files
// the sensor's black level and the count at which it is full.
//
// Colours: with `header.mosaic` each sample has one, by `header.pattern`; else planes are 1, or 3
// for red, green and blue.
//
// `count` samples from the start could be read; all others are not set. Samples and an error both
// when the file ends too early. Of a file with several pictures the one that ImageChoice says.
std::optional<FitsSamples> ReadSamplePlanes(const std::string& path, std::string& error);

} // namespace tarn
