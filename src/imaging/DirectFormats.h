// The readers of what the decoder process reads: for the process itself, and for the program where
// there is none.
#pragma once

#include "decoder/Protocol.h"
#include "imaging/PictureFormat.h"

namespace tarn {

// Null and an error where its module is not installed.
const PictureFormat* DirectFormat(DecoderFormat format, std::string& error);

extern const PictureFormat kDirectToolkit;
extern const PictureFormat kDirectFits;

} // namespace tarn
