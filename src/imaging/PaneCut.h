// The part of a picture that a pane shows of it at its own size or a larger one.
#pragma once

#include "common/fit.h"
#include "common/zoom.h"
#include "imaging/ImgX.h"

namespace tarn {

// `crop` counts pixels of the picture at the size in which it is shown.
void CutForPane(ImgX& picture, const PreviewCrop& crop, bool doubled);

// The pixels of the picture of which a part of it, so many times enlarged, shows something.
ImgX PixelsOf(ImgX picture, int times, const SeenPart& part);

// That part itself as far as the picture goes, brightened. From a picture with all its pixels at
// hand it costs no more than what is seen.
QImage SeenOf(const ImgX& picture, int times, const SeenPart& part, int brightness);

// The same where `before` shows another part of it alike: only what comes into sight is made.
QImage SeenMoved(const QImage& before, const SeenPart& was, const ImgX& picture, int times,
                 const SeenPart& part, int brightness);

} // namespace tarn
