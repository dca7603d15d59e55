// Which pictures stand in the areas: pages and steps through the selection of the main window.
#include "slides/ManySlides.h"

#include "desk/state/Replay.h"
#include "platform/QtText.h"
#include "slides/SlidePainter.h"
#include "slides/SlideTitle.h"
#include "widgets/FileListBox.h"

#include <QLabel>

#include <algorithm>

namespace tarn {

// To the next row behind or before `row` that shows a picture; once round at most.
bool ManySlides::StepFrom(int row, bool forward) {
    ProgramState& s = m.state;
    for (int tries = m.controls.FileListBox->Count(); tries > 0 && !m_time.Ends(); --tries) {
        s.ImageLoaded = false; // set by a picture alone, not by a file that has gone
        m.navigation.StepFrom(row, forward ? 1 : -1, InPassing());
        if (s.ImageLoaded && s.Kind == FileKind::Picture) return true;
        row = s.FileIndex;
        if (!m.controls.Label_error->isHidden()) m_error = FromQt(m.controls.Label_error->text());
        m_time.Pump();
    }
    return false;
}

bool ManySlides::Holds(int row) const {
    return std::any_of(m_areas.begin(), m_areas.end(),
                       [row](const Area& area) { return area.row == row; });
}

// A page from the row behind this one on. With fewer pictures than areas the rest stays empty.
bool ManySlides::LoadForward(int fromRow) {
    m_areas.clear();
    const int most = std::min(AreasOf(m_time.Layout()), m.controls.FileListBox->Count());
    while (int(m_areas.size()) < most && StepFrom(fromRow, true) && !Holds(m.state.FileIndex)) {
        m_areas.push_back(TakeArea());
        fromRow = m_areas.back().row;
    }
    return !m_areas.empty();
}

void ManySlides::TakeBeside() {
    const int row = m.controls.FileListBox->RowOf(m_beside);
    if (row >= 0 && m_areas.size() > 1 && StepFrom(row - 1, true)) m_areas.back() = TakeArea();
}

// A page that ends before this row, filled from its end.
bool ManySlides::LoadBackward(int fromRow) {
    m_areas.clear();
    const int most = std::min(AreasOf(m_time.Layout()), m.controls.FileListBox->Count());
    while (int(m_areas.size()) < most && StepFrom(fromRow, false) && !Holds(m.state.FileIndex)) {
        m_areas.insert(m_areas.begin(), TakeArea());
        fromRow = m_areas.front().row;
    }
    return !m_areas.empty();
}

// Where one picture is compared with the others, a page is one picture.
bool ManySlides::Go(SlideMove move) {
    const bool compare = m.state.SlideCompare;
    if (compare && m_areas.size() < 2) return true; // there is none to compare with
    switch (move) {
    case SlideMove::Next:
        return Step(true);
    case SlideMove::Previous:
        return Step(false);
    case SlideMove::PageOn:
        return compare ? Step(true) : LoadForward(m_areas.back().row);
    case SlideMove::PageBack:
        return compare ? Step(false) : LoadBackward(m_areas.front().row);
    case SlideMove::First:
        if (!compare) return LoadForward(-1);
        if (!StepFrom(-1, true)) return false;
        m_areas.back() = TakeArea();
        return true;
    case SlideMove::Last:
        if (!compare) return LoadBackward(0);
        if (!StepFrom(0, false)) return false;
        m_areas.back() = TakeArea();
        return true;
    case SlideMove::Again:
        break;
    }
    return true;
}

// The areas take over from one another, and one is loaded; of two that are compared the first
// stays.
bool ManySlides::Step(bool forward) {
    const bool compare = m.state.SlideCompare;
    const int row = forward || compare ? m_areas.back().row : m_areas.front().row;
    if (!StepFrom(row, forward)) return false;
    if (compare) {
        m_areas.back() = TakeArea();
    } else if (forward) {
        m_areas.erase(m_areas.begin());
        m_areas.push_back(TakeArea());
    } else {
        m_areas.pop_back();
        m_areas.insert(m_areas.begin(), TakeArea());
    }
    return true;
}

ManySlides::Area ManySlides::TakeArea() const {
    const ProgramState& s = m.state;
    Area area;
    area.row = s.FileIndex;
    area.name = s.FileNameOnly;
    area.date = s.FileModifiedText;
    area.camera = s.ExpTime.empty() ? std::string() : CameraFields(s);
    area.last = s.FileIndex + 1 == m.controls.FileListBox->Count();
    area.whole = TurnedPicture();
    return area;
}

// The full copy, which has as many pixels as an area needs.
ImgX ManySlides::TurnedPicture() const {
    const ProgramState& s = m.state;
    ImgX picture = s.ImgXfull;
    if (!m_landscape)
        ReplayTurns(s, picture);
    else if (picture.Height() > picture.Width())
        picture.Rotate(270);
    return picture;
}

// As it is painted now; the slider may have moved since the area was taken.
QImage ManySlides::PictureOf(Area& area) {
    const int brightness = m.state.BrightnessValue;
    if (m_time.Zoom().IsZoomed()) {
        area.whole.FetchAll();
        if (const std::string& error = area.whole.ErrorText(); !error.empty())
            m_error = error + " - " + area.name; // what is seen is an enlargement
        return m_time.Zoom().Seen(area.whole, brightness);
    }
    if (area.picture.isNull()) {
        ImgX fitted = area.whole;
        FitInto(fitted, m_time.Layout(), m_time.Screen());
        area.picture = fitted.FullPicture();
    }
    ImgX bright;
    bright.TakePicture(area.picture);
    bright.Brightness(brightness);
    return bright.FullPicture();
}

} // namespace tarn
