#include "desk/batch/PassingPictures.h"

#include "imaging/PaneCut.h"
#include "widgets/PictureBox.h"

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

using Clock = std::chrono::steady_clock;

// Pictures change on the screen this far apart, and for a small share of the time at most.
constexpr std::chrono::milliseconds kShowEvery(300);
constexpr int kShowShare = 20;

} // namespace

PassingPictures::PassingPictures(Context& context, std::vector<std::string> paths)
    : m(context), m_reading(context.ahead), m_paths(std::move(paths)),
      m_before(context.controls.Picture1->Picture()), m_nextShow(Clock::now() + kShowEvery) {}

PassingPictures::~PassingPictures() {
    m.controls.Picture1->SetPicture(m_before);
}

QSize PassingPictures::Wanted() const {
    const ProgramState& s = m.state;
    return IsCut() || s.OneToOneLoaded ? QSize() : QSize(s.PreviewWidth, s.PreviewHeight);
}

PassedPicture PassingPictures::Show(std::size_t index) {
    PassedPicture passed = Pass(index);
    m_reading.Expect(m_paths, index + 1, Wanted());
    return passed;
}

void PassingPictures::ShowNowAndThen(std::size_t index) {
    const auto begin = Clock::now();
    if (begin < m_nextShow) return;
    Pass(index);
    const auto end = Clock::now();
    m_nextShow = end + std::max<Clock::duration>(kShowEvery, (end - begin) * kShowShare);
}

PassedPicture PassingPictures::Pass(std::size_t index) {
    const int brightness = m.state.BrightnessValue;
    auto [read, standIn, fault] = m_reading.Read(m_paths[index], Wanted());
    ImgX inPane = InPane(read);
    inPane.Brightness(brightness);
    m.controls.Picture1->SetPicture(inPane.FullPicture());
    const QSize size(inPane.Width(), inPane.Height());
    if (IsCut()) return {std::move(inPane), size, std::move(fault)};
    read.Brightness(brightness);
    return {std::move(read), size, std::move(fault)};
}

ImgX PassingPictures::InPane(ImgX picture) const {
    const ProgramState& s = m.state;
    if (IsCut()) {
        const int scale = s.TwoX ? 2 : 1;
        CutForPane(picture,
                   CropPreview(picture.Width() * scale, picture.Height() * scale, s.PreviewWidth,
                               s.PreviewHeight),
                   s.TwoX);
        return picture;
    }
    const PreviewFit fit =
        FitPreview(picture.Width(), picture.Height(), s.PreviewWidth, s.PreviewHeight);
    if (fit.reduced) picture.Scale(fit.width, fit.height);
    return picture;
}

} // namespace tarn
