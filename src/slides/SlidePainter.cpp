#include "slides/SlidePainter.h"

#include "platform/QtText.h"
#include "slides/frmSlideShow.h"

#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kQuarter = 90; // degrees
constexpr int kLeftToRight = 0;
constexpr double kTextPlace = 10; // logical pixels from the picture's corner

} // namespace

void Apply(ImgX& picture, const Turn& turn) {
    if (turn.mirrored) picture.Mirror(kLeftToRight);
    if (turn.quarters != 0) picture.Rotate(float(kQuarter * turn.quarters));
}

// The preview turns right, turns left, mirrors and flips, in this order: a half turn is a mirroring
// both ways, and a mirroring before a quarter turn is a flip behind it.
std::optional<PreviewTurns> TurnsOf(const Turn& turn) {
    if (!turn.mirrored && turn.quarters == 0) return std::nullopt;
    const bool half = turn.quarters == 2;
    const bool quarter = turn.quarters % 2 != 0;
    PreviewTurns turns;
    turns.ImageRotatedRight = turn.quarters == 1;
    turns.ImageRotatedLeft = turn.quarters == 3;
    turns.ImageMirrored = turn.mirrored ? turn.quarters == 0 : half;
    turns.ImageFliped = turn.mirrored ? half || quarter : half;
    return turns;
}

void FitInto(ImgX& picture, SlideLayout layout, const SlideScreen& screen) {
    const SlideSize size = FitSlide(picture.Width(), picture.Height(), layout, screen);
    picture.Scale(size.width, size.height);
}

std::function<std::vector<QSize>(QSize)> SizesIn(SlideLayout layout, const SlideScreen& screen) {
    return [layout, screen](QSize picture) {
        const SlideSize upright = FitSlide(picture.width(), picture.height(), layout, screen);
        const SlideSize lying = FitSlide(picture.height(), picture.width(), layout, screen);
        return std::vector<QSize>{{upright.width, upright.height}, {lying.height, lying.width}};
    };
}

void PaintText(QImage& picture, const std::string& text, const SlideState& state,
               const SlideScreen& screen) {
    if (text.empty()) return;
    picture.setDevicePixelRatio(screen.unit);
    {
        QPainter painter(&picture);
        painter.setFont(frmSlideShow::TextFont(state));
        painter.setPen(frmSlideShow::TextColor(state));
        const double width = std::min<double>(screen.width, picture.width()) / screen.unit;
        painter.drawText(QRectF(kTextPlace, kTextPlace, std::max(1.0, width - 2 * kTextPlace),
                                picture.height() / screen.unit),
                         Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, ToQt(text));
    }
    picture.setDevicePixelRatio(1);
}

} // namespace tarn
