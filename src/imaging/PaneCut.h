// The part of a picture that a pane shows of it at its own or the double size.
#pragma once

#include "common/fit.h"
#include "imaging/ImgX.h"

namespace tarn {

// `crop` counts pixels of the picture at the size in which it is shown.
void CutForPane(ImgX& picture, const PreviewCrop& crop, bool doubled);

} // namespace tarn
