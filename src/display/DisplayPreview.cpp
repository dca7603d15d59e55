// The loaded picture, fitted or cut into the pane, with the texts around it.
#include "display/DisplayRoom.h"

#include "common/colors.h"
#include "imaging/PaneCut.h"
#include "imaging/PicturesAhead.h"
#include "platform/QtText.h"
#include "widgets/PictureBox.h"
#include "widgets/Themes.h"

#include <QLabel>
#include <QPalette>
#include <QPushButton>

namespace tarn {

void DisplayRoom::ShowPreview() {
    ProgramState& s = m.state;
    if (s.ImageWidth == 0 && s.ImageHeight == 0) return;
    m_whole.Clear();
    if (s.SlideZoomed) return; // nobody sees the pane, and a fit of all the pixels takes long
    if (IsZoomed()) return PutZoomed();
    m_preview.CopyFrom(m_turned);
    if (IsCutMode())
        CutToPane();
    else
        FitIntoPane();
    PutPicture();
    PutSize(PaneForZoom().unzoomed);
    m.controls.Picture1->unsetCursor();
}

void DisplayRoom::FitIntoPane() {
    ProgramState& s = m.state;
    // Of the pixels that there are: after a conversion the texts tell another size.
    const PreviewFit fit =
        FitPreview(m_turned.Width(), m_turned.Height(), s.PreviewWidth, s.PreviewHeight);
    if (fit.reduced) m_preview.Scale(fit.width, fit.height);
    PutText(fit.reduced ? PreviewKind::Reduced : PreviewKind::FullSize, false);
}

void DisplayRoom::CutToPane() {
    ProgramState& s = m.state;
    const int width = m_turned.Width() * Scale();
    const int height = m_turned.Height() * Scale();
    const PreviewCrop crop = CropPreview(width, height, s.PreviewWidth, s.PreviewHeight);
    CutForPane(m_preview, crop, s.TwoX);
    PutText(s.TwoX ? PreviewKind::DoubledCut : PreviewKind::FullSizeCut,
            crop.width < width || crop.height < height);
}

// The brightness in force holds for every picture that is put up, however it came about.
void DisplayRoom::PutPicture() {
    if (IsZoomed()) return PutZoomed();
    ImgX* shown = &m_preview;
    if (m.state.BrightnessValue != 0) {
        m_bright.CopyFrom(m_preview);
        m_bright.Brightness(m.state.BrightnessValue);
        shown = &m_bright;
    }
    m.controls.Picture1->SetPicture(shown->FullPicture());
    PutRings();
}

ImgX DisplayRoom::ShownPicture() {
    ImgX picture = IsCutMode() ? m_preview : m_turned;
    if (IsZoomed()) picture = PixelsOf(Whole(), m_zoom.Times(), m_zoom.Part(PaneForZoom()));
    picture.Brightness(m.state.BrightnessValue);
    return picture;
}

void DisplayRoom::PutText(PreviewKind kind, bool cut) {
    QLabel* label = m.controls.PreviewLabel;
    const PreviewText text = PreviewTextOf(kind);
    // The colours are fixed: where one cannot be read on the window, it brings a ground of its own.
    QPalette palette;
    const int window = int(palette.color(QPalette::Window).rgb() & 0xFFFFFF);
    const QColor ink = Themed(QColor::fromRgb(QRgb(text.rgb)));
    const int rgb = int(ink.rgb() & 0xFFFFFF);
    const bool reads = ContrastOf(rgb, window) >= kReadable;
    if (!reads) palette.setColor(QPalette::Window, QColor::fromRgb(QRgb(GroundFor(rgb))));
    label->setAutoFillBackground(!reads);
    label->setContentsMargins(reads ? 0 : 4, 0, reads ? 0 : 4, 0);
    palette.setColor(QPalette::WindowText, ink);
    label->setPalette(palette);
    label->setText(ToQt(text.text));
    label->setToolTip(ToToolTip(text.text));
    label->setVisible(true);
    m.controls.CropLabel->setVisible(cut);
}

// A placeholder's own size says nothing of the file.
void DisplayRoom::PutSize(double scale) {
    ProgramState& s = m.state;
    if (s.ImageWidth <= 0 || m_placeholder) return;
    s.SizeText = SizeTextOf(s.ImageWidth * Scale(), s.ImageHeight * Scale());
    s.ZoomText = ZoomTextOf(scale);
    m.shell.ShowFileTexts();
}

// Without this the pane would go on showing the picture before, under the name of this one.
void DisplayRoom::PutNothing() {
    m.controls.Picture1->SetPicture(QImage());
    m.controls.Picture1->SetRings({});
    m.controls.PreviewLabel->setVisible(false);
    m.controls.CropLabel->setVisible(false);
    m.controls.Picture1->unsetCursor();
}

void DisplayRoom::ShowNothing() {
    m_awaited.End();
    ProgramState& s = m.state;
    MainControls& c = m.controls;
    m.video.CloseVideoClip();
    m.current.ShowAs(FileKind::Picture);
    m.shell.ShowMessage("");
    s.HistoryListed = false;
    ForgetPicture(s);
    s.EditCaption = "Edit";
    for (QWidget* over :
         std::initializer_list<QWidget*>{c.LastLabel, c.DeletePicButton, c.DeleteFitsButton})
        over->hide();
    for (ImgX* image : {&s.ImgXfull, &m_turned, &m_preview, &m_bright, &m_whole}) image->Clear();
    s.ImageLoaded = false;
    PutNothing();
    s.SizeText.clear();
    s.ZoomText.clear();
    m.shell.ShowFileTexts();
    SetPictureCommands(false);
    m.ahead.Expect({});
    UpdatePictureWindows();
}

} // namespace tarn
