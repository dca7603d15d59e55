#include "imaging/PaneCut.h"

#include "common/numbers.h"

#include <algorithm>

namespace tarn {

// The double size without doubling what lies outside the cut: a large picture would take four times
// its memory. Some pixels more than needed go along, so that the edges come out as from the whole.
void CutForPane(ImgX& picture, const PreviewCrop& crop, bool doubled) {
    constexpr int kEdge = 2;
    const int left = int(RoundHalfEven(crop.left));
    const int top = int(RoundHalfEven(crop.top));
    if (!doubled) {
        picture.Crop(left, top, crop.width, crop.height);
        return;
    }
    const int sourceLeft = std::max(0, left / 2 - kEdge);
    const int sourceTop = std::max(0, top / 2 - kEdge);
    picture.Crop(sourceLeft, sourceTop, crop.width / 2 + 1 + 2 * kEdge,
                 crop.height / 2 + 1 + 2 * kEdge);
    picture.Scale(picture.Width() * 2, picture.Height() * 2);
    picture.Crop(left - sourceLeft * 2, top - sourceTop * 2, crop.width, crop.height);
}

} // namespace tarn
