// The picture in the pane larger than it fits: zoomed at the pointer, moved under it.
#include "display/DisplayRoom.h"

#include "display/BusyPointer.h"
#include "imaging/PaneCut.h"
#include "widgets/PictureBox.h"

#include <QCheckBox>
#include <QCursor>

#include <algorithm>

namespace tarn {

// A placeholder is seen whole. While a show runs the pane is not seen: there is no need of the
// pixels.
bool DisplayRoom::IsZoomed() const {
    return m_zoom.IsZoomed() && !m_placeholder && !m.state.SlideViewing && m_turned.HasImage() &&
           m.state.Kind == FileKind::Picture;
}

bool DisplayRoom::MayZoom() const {
    const ProgramState& s = m.state;
    return s.ImageLoaded && s.Kind == FileKind::Picture && !m_placeholder && !s.SlideViewing &&
           !s.BatchRuns;
}

ZoomPane DisplayRoom::PaneForZoom() const {
    const ProgramState& s = m.state;
    const PixelSize picture{m_turned.Width(), m_turned.Height()};
    const PreviewFit fit =
        FitPreview(picture.width, picture.height, s.PreviewWidth, s.PreviewHeight);
    const double fitted =
        double(std::max(fit.width, fit.height)) / std::max({1, picture.width, picture.height});
    return {picture, {s.PreviewWidth, s.PreviewHeight}, IsCutMode() ? Scale() : fitted};
}

// Of a place of the pane in the toolkit's pixels, in those of the screen.
ZoomPoint DisplayRoom::FromMiddle(std::optional<QPointF> place) const {
    const PictureBox& pane = *m.controls.Picture1;
    const QPointF pointer = pane.mapFromGlobal(QPointF(QCursor::pos()));
    if (!place && pane.underMouse() && QRectF(pane.rect()).contains(pointer)) place = pointer;
    if (!place) return {};
    const QPointF way = (*place - QRectF(pane.rect()).center()) * pane.devicePixelRatioF();
    return {way.x(), way.y()};
}

void DisplayRoom::Zoom(int steps, std::optional<QPointF> at) {
    if (!MayZoom() || !m_zoom.Zoom(steps, FromMiddle(at), PaneForZoom())) return;
    if (IsZoomed())
        PutZoomed();
    else
        ShowPreview();
    ExpectNeighbours(); // at the size in which they will be seen from now on
}

bool DisplayRoom::MayPan() const {
    return MayZoom() && IsZoomed() && m_zoom.Exceeds(PaneForZoom());
}

void DisplayRoom::Pan(QPointF way) {
    if (!MayPan()) return;
    PictureBox& box = *m.controls.Picture1;
    const ZoomPane pane = PaneForZoom();
    const SeenPart before = m_zoom.Part(pane);
    way *= box.devicePixelRatioF();
    m_zoom.Pan({way.x(), way.y()}, pane);
    box.SetPicture(SeenMoved(box.Picture(), before, Whole(), m_zoom.Times(), m_zoom.Part(pane),
                             m.state.BrightnessValue));
    PutRings();
}

// The boxes 1x and 2x give way, too.
void DisplayRoom::FitToPaneButton_Click() {
    if (!MayZoom()) return;
    for (QCheckBox* box : {m.controls.OneXcheck, m.controls.TwoXcheck})
        if (box->isChecked()) return box->setChecked(false);
    if (!m_zoom.IsZoomed()) return;
    m_zoom.Unzoom();
    ShowPreview();
    ExpectNeighbours();
}

// Fetched once: from then on each view of the picture costs no more than what is seen.
const ImgX& DisplayRoom::Whole() {
    if (m_whole.HasImage()) return m_whole;
    const BusyPointer busy(m.shell);
    m_whole.CopyFrom(m_turned);
    m_whole.FetchAll();
    const std::string error = m_whole.ErrorText(); // what is shown is an enlargement then
    if (!error.empty()) m.shell.ShowMessage(error + " - " + m.state.FileNameOnly);
    return m_whole;
}

void DisplayRoom::PutZoomed() {
    const ZoomPane pane = PaneForZoom();
    PictureBox& box = *m.controls.Picture1;
    box.SetPicture(SeenOf(Whole(), m_zoom.Times(), m_zoom.Part(pane), m.state.BrightnessValue));
    PutRings();
    const bool cut = m_zoom.Exceeds(pane);
    if (!cut)
        box.unsetCursor();
    else if (box.cursor().shape() != Qt::ClosedHandCursor) // in the user's hand
        box.setCursor(Qt::OpenHandCursor);
    PutText(CutOf(m_zoom.Times()), cut);
    PutSize(m_zoom.Scale(pane));
}

} // namespace tarn
