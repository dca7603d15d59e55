#include "slides/ManySlides.h"

#include "common/paths.h"
#include "imaging/PicturesAhead.h"
#include "slides/SlidePainter.h"
#include "slides/SlideTitle.h"
#include "widgets/FileListBox.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr int kHelpPage = 5;

// The list as it is before videos are left out, from the current row on.
std::vector<std::string> NamesOnward(const Context& m) {
    constexpr int kFarthest = 200; // rows that may be none
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<std::string> names;
    const int first = std::max(0, list.CurrentRow());
    for (int row = first; row < std::min(list.Count(), first + kFarthest); ++row)
        names.push_back(list.Text(row));
    return names;
}

} // namespace

ManySlides::ManySlides(Context& context, ShowTime& time, bool landscape)
    : m(context), m_time(time), m_landscape(landscape), m_startNames(NamesOnward(context)),
      m_only(context, SlideBoxOf(time.Layout(), time.Screen())) {
    m_time.onAgain = [this] { Leave(SlideMove::Again); };
    m_time.pictures = [this] {
        std::vector<PixelSize> sizes;
        for (const Area& area : m_areas) sizes.push_back({area.whole.Width(), area.whole.Height()});
        return sizes;
    };
    m_time.onView = [this](bool zoomed) {
        Paint();
        if (zoomed) ExpectNeighbours(m_forward);
    };
    m_time.onEnd = [this] {
        m_only.PutBack();
        // The next start begins where the main window would have come back.
        const FileListBox& list = *m.controls.FileListBox;
        if (const int row = EndRow(); m.state.Closing && row >= 0)
            m.current.Choose(JoinPath(list.Path(), list.Text(row)), row);
    };
}

// The current row's, or that of the next picture where it is none.
int ManySlides::StartRow() const {
    for (const std::string& name : m_startNames)
        if (const int row = m.controls.FileListBox->RowOf(name); row >= 0) return row;
    return 0;
}

// Of the first picture shown that is still there; -1 where all have gone.
int ManySlides::EndRow() const {
    for (const Area& area : m_areas)
        if (const int row = m.controls.FileListBox->RowOf(area.name); row >= 0) return row;
    return -1;
}

void ManySlides::Run() {
    bool shown = LoadForward(StartRow() - 1);
    TakeBeside();
    while (shown && !m_time.Ends()) {
        Paint();
        m_forward = m_move != SlideMove::Previous && m_move != SlideMove::PageBack;
        ExpectNeighbours(m_forward);
        m_move = SlideMove::Next;
        m_time.Signals().SlideNext = false;
        m_time.Signals().SlideMouse = 0;
        m_time.Wait([this](int keycode) { Dispatch(keycode); });
        if (!m_time.Ends()) shown = Go(m_move);
    }
}

void ManySlides::ShowEnd() {
    const FileListBox& list = *m.controls.FileListBox;
    const int row = m_areas.empty() ? StartRow() : EndRow();
    m.navigation.ClearMultiselect();
    if (list.Count() > 0)
        m.navigation.SelectRow(std::max(0, row));
    else
        m.navigation.EnableListCommands();
    if (!m_error.empty()) m.shell.ShowError(m_error);
}

void ManySlides::Paint() {
    frmSlideShow& window = m_time.Window();
    window.Clear();
    for (std::size_t i = 0; i < m_areas.size(); ++i) {
        const QImage picture = PictureOf(m_areas[i]);
        const SlidePlace place = PlaceSlide({picture.width(), picture.height()}, int(i),
                                            m_time.Layout(), m_time.Screen());
        m_areas[i].place = QRect(QPoint(place.left, place.top), picture.size());
        window.PutPicture(picture, place.left, place.top);
    }
    ShowFrame();
    DrawTitles();
}

void ManySlides::DrawTitles() {
    const ProgramState& s = m.state;
    std::vector<SlideLine> lines;
    for (std::size_t i = 0; m_time.TitleOn() && i < m_areas.size(); ++i) {
        const Area& area = m_areas[i];
        const SlideStrip strip =
            TitleStrip(area.place.height(), int(i), m_time.Layout(), m_time.Screen());
        lines.push_back(
            {AreaTitle(area.name, area.date, s.CameraSettings ? area.camera : std::string(),
                       area.row, area.last, MarkShown(area)),
             strip.left, strip.top, strip.width});
    }
    m_time.Window().SetLines(std::move(lines));
    m_time.Window().Refresh();
}

// As the selection will ask for them.
QSize ManySlides::WantedPixels() const {
    const ProgramState& s = m.state;
    const bool all = s.OneX || s.TwoX || s.OneToOneLoaded || s.SlideZoomed;
    return all ? QSize() : QSize(s.PreviewWidth, s.PreviewHeight);
}

void ManySlides::ExpectNeighbours(bool forward) {
    const ProgramState& s = m.state;
    const FileListBox& list = *m.controls.FileListBox;
    const QSize wanted = WantedPixels();
    const int count = list.Count();
    if (count < 1 || m_areas.empty()) return; // the list may have emptied under the pictures
    const int first = m_areas[s.SlideCompare && m_areas.size() > 1 ? 1 : 0].row;
    const int last = m_areas.back().row;
    std::vector<PictureWish> wishes;
    const auto wish = [&](int row) {
        row = (row % count + count) % count;
        const std::string type = FileTypeOf(list.Text(row));
        if (IsListedType(s.VideoTypes, type) || IsListedType(s.WebTypes, type)) return;
        wishes.push_back({JoinPath(list.Path(), list.Text(row)), wanted, m_time.ShownSizes()});
    };
    // A page is so many pictures.
    for (int offset = 1; offset <= AreasOf(m_time.Layout()); ++offset)
        wish(forward ? last + offset : first - offset);
    wish(forward ? first - 1 : last + 1);
    m.ahead.Expect(wishes);
}

void ManySlides::Dispatch(int keycode) {
    const bool compare = m.state.SlideCompare;
    if (m_time.Signals().SlideMouse == kSlideRight)
        return Leave(compare ? SlideMove::Previous : SlideMove::PageBack);
    if (m_time.Signals().SlideMouse == kSlideLeft)
        return Leave(compare ? SlideMove::Next : SlideMove::PageOn);
    const SlideEffect effect = ManyEffectOf(keycode);
    if (const auto change = MarkChangeOf(effect)) return SetMark(*change);
    switch (effect.action) {
    case SlideAction::None:
        return;
    case SlideAction::Move:
        return Leave(static_cast<SlideMove>(effect.amount));
    case SlideAction::Zoom:
        return m_time.ZoomBy(effect.amount);
    case SlideAction::Frame:
        return MoveFrame(static_cast<FrameWay>(effect.amount));
    case SlideAction::Help:
        return m_time.ShowHelp(kHelpPage);
    case SlideAction::Done:
        return m_time.End();
    default:
        return ChangeLook(effect.action);
    }
}

void ManySlides::Leave(SlideMove move) {
    m_move = move;
    m_time.Signals().Slideloop = false;
}

// No picture is decoded for these.
void ManySlides::ChangeLook(SlideAction action) {
    switch (action) {
    case SlideAction::Title:
        m_time.TitleOn() = !m_time.TitleOn();
        return DrawTitles();
    case SlideAction::TextColor:
        m_time.NextTextColor();
        return DrawTitles();
    case SlideAction::TextFont:
        m_time.NextTextFont();
        m_time.TitleOn() = true;
        return DrawTitles();
    case SlideAction::TextSize:
        m_time.NextTextSize();
        m_time.TitleOn() = true;
        return DrawTitles();
    case SlideAction::CameraSettings:
        m_time.ToggleCameraSettings();
        return DrawTitles();
    case SlideAction::Background:
        m_time.NextBackground();
        return Paint();
    default:
        return;
    }
}

} // namespace tarn
