// What reading a picture's pixels takes, said before it is done.
#pragma once

#include "imaging/PictureFormat.h"

namespace tarn {

// The peak of memory in bytes, with the pixels that come out, by the file's header; `size` are the
// format's own pixels, `wanted` is as for its decode. JPEG is reckoned from its scans and scale; of
// the others each pixel counts as much as the process was seen to grow by on pictures of 24
// megapixels (PNG, TIFF, WebP, AVIF, JPEG XL), or as the reader's own arrays have (FITS, raw).
long long DecodeCost(const PictureFormat& format, std::FILE* file, QSize size, QSize wanted);

// Why pixels of this cost are not read: they do not fit into the memory for pictures, or the file
// has far too few bytes for what its header claims. Empty when they may be.
std::string CostFault(long long cost, QSize size, std::int64_t fileBytes);

} // namespace tarn
