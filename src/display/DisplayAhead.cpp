// How many pixels are needed, and which pictures are decoded while this one stands.
#include "display/DisplayRoom.h"

#include "common/paths.h"
#include "display/FrmPic.h"
#include "display/frmOnetoOne.h"
#include "imaging/PicturesAhead.h"
#include "widgets/FileListBox.h"

namespace tarn {

namespace {

// The boxes to which a picture will be fitted; those not in use are empty.
struct ShownIn {
    QSize pane;
    PixelSize window;
    PixelSize navigator;
};

// Upright and on its side, since the workers do not know how the picture will be turned.
std::vector<QSize> ShownSizes(const ShownIn& in, QSize picture) {
    std::vector<QSize> sizes;
    for (const bool turned : {false, true}) {
        const QSize seen = turned ? picture.transposed() : picture;
        const auto add = [&](int width, int height) {
            const QSize size(width, height);
            if (size != seen) sizes.push_back(turned ? size.transposed() : size);
        };
        const PixelSize whole{seen.width(), seen.height()};
        const PreviewFit fit =
            FitPreview(seen.width(), seen.height(), in.pane.width(), in.pane.height());
        if (fit.reduced) add(fit.width, fit.height);
        const PixelSize inWindow = FitSizeWindow(whole, in.window);
        add(inWindow.width, inWindow.height);
        if (in.navigator.width < 1) continue;
        const PixelSize copy = FitNavigator(whole, in.navigator);
        add(copy.width, copy.height);
    }
    return sizes;
}

} // namespace

bool DisplayRoom::IsSizeWindowUp() const {
    return m_pic && m_pic->isVisible();
}

QSize DisplayRoom::WantedPixels() const {
    const ProgramState& s = m.state;
    const bool zoomed = s.SlideViewing ? s.SlideZoomed : m_zoom.IsZoomed();
    if (zoomed || IsCutMode() || s.OneToOneLoaded || s.CornersShown ||
        (IsSizeWindowUp() && m_pic->IsZoomed()))
        return {};
    const QSize pane(s.PreviewWidth, s.PreviewHeight);
    if (!IsSizeWindowUp() || s.SlideViewing || pane.isEmpty()) return pane;
    const PixelSize window = m_pic->Inside();
    return pane.expandedTo(QSize(window.width, window.height));
}

// A show wishes for itself, and so does a batch.
void DisplayRoom::ExpectNeighbours() {
    const ProgramState& s = m.state;
    const FileListBox& list = *m.controls.FileListBox;
    m_travel.GoTo(s.FileIndex, list.Count());
    if (s.SlideViewing || s.BatchRuns) return;
    ShownIn in;
    if (!IsCutMode() && !m_zoom.IsZoomed()) in.pane = {s.PreviewWidth, s.PreviewHeight};
    if (IsSizeWindowUp()) in.window = m_pic->Inside();
    if (s.OneToOneLoaded && m_one) in.navigator = m_one->Navigator();
    const auto isPicture = [&](int row) {
        const std::string type = FileTypeOf(list.Text(row));
        return type != ".TXT" &&
               (IsListedType(s.PictureTypes, type) || IsListedType(s.FitsClassTypes(), type) ||
                IsListedType(s.RawTypes, type));
    };
    std::vector<PictureWish> wishes;
    for (const int row : m_travel.Next(isPicture))
        wishes.push_back({JoinPath(list.Path(), list.Text(row)), WantedPixels(),
                          [in](QSize picture) { return ShownSizes(in, picture); }});
    m.ahead.Expect(wishes);
}

} // namespace tarn
