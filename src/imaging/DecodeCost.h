// What reading a picture's pixels takes, said before it is done.
#pragma once

#include "imaging/PictureFormat.h"

namespace tarn {

// The peak of memory in bytes, with the pixels that come out, by the file's header; `size` are the
// format's own pixels, `wanted` is as for its decode. The numbers are those of the libraries: what
// they hold of a pixel while they work, measured on large files.
long long DecodeCost(const PictureFormat& format, std::FILE* file, QSize size, QSize wanted);

// Why pixels of this cost are not read: they do not fit into the memory for pictures, or the file
// has far too few bytes for what its header claims. Empty when they may be.
std::string CostFault(long long cost, QSize size, std::int64_t fileBytes);

} // namespace tarn
