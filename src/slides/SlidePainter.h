// Makes of a decoded picture what a show paints.
#pragma once

#include "desk/state/DisplayState.h"
#include "desk/state/SlideState.h"
#include "imaging/ImgX.h"
#include "slides/SlideArithmetic.h"

#include <QImage>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

// The turn on a picture, and as the turns from which the preview makes it again; none for none.
void Apply(ImgX& picture, const Turn& turn);
std::optional<PreviewTurns> TurnsOf(const Turn& turn);

// Fitted into its area.
void FitInto(ImgX& picture, SlideLayout layout, const SlideScreen& screen);

// The sizes to which pictures will be scaled, upright and on their side, for a worker that prepares
// them: given a picture's size, as stored.
std::function<std::vector<QSize>(QSize)> SizesIn(SlideLayout layout, const SlideScreen& screen);

// Writes the text into the picture's corner, in font and colour of the titles.
void PaintText(QImage& picture, const std::string& text, const SlideState& state,
               const SlideScreen& screen);

} // namespace tarn
