// Pictures of telescopes while they stand on the screen: stretched otherwise, another of the file.
#include "display/DisplayRoom.h"
#include "display/frmStretch.h"
#include "imaging/fits/ImageChoice.h"

#include <QAction>

namespace tarn {

void DisplayRoom::StretchButton_Click() {
    if (!m_stretch) {
        m_stretch = std::make_unique<frmStretch>(m);
        m_stretch->wanted = [this] { return WantedPixels(); };
        m_stretch->onMoved = [this](const QImage& pixels) { ShowStretched(pixels); };
        m_stretch->onChosen = [this] { Restretch(); };
    }
    m_stretch->Form_Load();
}

bool DisplayRoom::IsFits() const {
    return !m_placeholder && m_turned.Facts() && m_turned.Facts()->header.fits;
}

void DisplayRoom::FollowStretch() {
    SetEnabled(m.controls.StretchButton, IsFits());
    EnableImageSteps();
    if (m_stretch && m_stretch->isVisible()) m_stretch->Follow();
}

void DisplayRoom::EnableImageSteps() {
    const SkyFacts sky = IsFits() ? m_turned.Facts()->sky : SkyFacts();
    SetEnabled(m.controls.NextImageButton, sky.image + 1 < sky.images);
    SetEnabled(m.controls.PrevImageButton, sky.image > 0);
}

void DisplayRoom::ShowImage(int step) {
    if (!IsFits() || m.state.Kind != FileKind::Picture) return;
    const PictureFacts facts = *m_turned.Facts();
    const int image = facts.sky.image + step;
    if (image < 0 || image >= facts.sky.images) return;
    ChooseImage({facts.look.device, facts.look.inode, image});
    ReloadShownPicture();
    m.shell.ShowMessage("Image " + std::to_string(image + 1) + " of " +
                        std::to_string(facts.sky.images) + " in the file");
}

// Only the preview, and only until the decoders are told.
void DisplayRoom::ShowStretched(const QImage& pixels) {
    ImgX picture;
    picture.TakePicture(pixels);
    m_turned.TakePixels(picture);
    ShowPreview();
}

void DisplayRoom::Restretch() {
    ProgramState& s = m.state;
    if (!IsFits()) return;
    ImgX picture;
    const std::string error = picture.LoadFile(s.Filename, WantedPixels(), m.ahead);
    if (!picture.HasImage()) {
        m.shell.ShowMessage(error + " - " + s.FileNameOnly);
        return;
    }
    s.ImgXfull.CopyFrom(picture);
    m_turned.TakePixels(picture);
    ShowPreview();
    UpdatePictureWindows();
    ExpectNeighbours();
}

} // namespace tarn
