// Rings of a file upon the pane.
#include "display/Rings.h"

#include "display/DisplayRoom.h"
#include "display/frmOnetoOne.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr double kLeastRadius = 4; // pixels of the screen

} // namespace

std::vector<SeenRing> RingsIn(const PictureRings& rings, const SeenPlace& place, QSize seen) {
    std::vector<SeenRing> shown;
    for (const PictureRing& ring : rings.rings) {
        const QPointF at =
            place.scale * rings.raster.Seen(ring.x, ring.y, place.turn, place.turned) - place.begin;
        const double radius = std::max(kLeastRadius, ring.radius * place.scale);
        if (QRectF(QPointF(), QSizeF(seen)).adjusted(-radius, -radius, radius, radius).contains(at))
            shown.push_back({at, radius, QColor::fromRgb(QRgb(ring.rgb))});
    }
    return shown;
}

void DisplayRoom::ShowRings(const PictureRings& rings) {
    m_rings = rings;
    PutRings();
    if (m_one) m_one->ShowRings(rings);
}

void DisplayRoom::PutRings() {
    PictureBox& box = *m.controls.Picture1;
    if (m_rings.rings.empty() || m_rings.path != m.state.Filename || m_placeholder ||
        !m_turned.HasImage())
        return box.SetRings({});
    SeenPlace place{m_turns, QSize(m_turned.Width(), m_turned.Height()), 1, {}};
    const ZoomPane pane = PaneForZoom();
    place.scale = m_zoom.Scale(pane);
    if (IsZoomed()) {
        const SeenPart part = m_zoom.Part(pane);
        place.begin = QPointF(part.left, part.top);
    } else if (IsCutMode()) {
        const PreviewCrop crop =
            CropPreview(m_turned.Width() * Scale(), m_turned.Height() * Scale(),
                        m.state.PreviewWidth, m.state.PreviewHeight);
        place.begin = QPointF(double(crop.left), double(crop.top));
    }
    box.SetRings(RingsIn(m_rings, place, box.Picture().size()));
}

} // namespace tarn
