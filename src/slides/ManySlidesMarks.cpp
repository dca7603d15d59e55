// Which of the pictures on the screen is marked, and the frame round it.
#include "common/mark_text.h"
#include "common/paths.h"
#include "slides/ManySlides.h"
#include "widgets/FileListBox.h"

#include <algorithm>

namespace tarn {

// The one under the pointer, or the framed one once the frame was moved behind the pointer; of two
// that are compared at first the one that changes.
int ManySlides::MarkedArea() const {
    const int last = static_cast<int>(m_areas.size()) - 1;
    ViewWish pointer;
    m_time.Window().PutPointer(pointer);
    if (pointer.atX >= 0 && (m_frame < 0 || pointer != m_pointer)) {
        const int area = AreaAt(pointer.atX, pointer.atY, m_time.Layout(), m_time.Screen());
        if (area <= last) return area;
    }
    if (m_frame >= 0) return std::min(m_frame, last);
    return m.state.SlideCompare ? last : 0;
}

// With the camera's settings, and where it was set while the picture stands.
std::string ManySlides::MarkShown(const Area& area) const {
    if (!m.state.CameraSettings && !area.marked) return {};
    const std::string path = JoinPath(m.controls.FileListBox->Path(), area.name);
    return MarkText(m.marks.MarkOf(path).value_or(Mark()));
}

void ManySlides::SetMark(const MarkChange& change) {
    if (m_areas.empty()) return;
    m_frame = MarkedArea();
    m_pointer = {};
    m_time.Window().PutPointer(m_pointer);
    Area& area = m_areas[static_cast<std::size_t>(m_frame)];
    area.marked = true;
    m.marks.MarkFiles({JoinPath(m.controls.FileListBox->Path(), area.name)}, change);
    ShowFrame();
    DrawTitles();
}

void ManySlides::MoveFrame(FrameWay way) {
    const int columns = m_time.Layout() == SlideLayout::TwoVertical ? 1 : 2;
    const int from = MarkedArea();
    const int column = from % columns;
    int to = from;
    if (way == FrameWay::Left && column > 0) to = from - 1;
    if (way == FrameWay::Right && column + 1 < columns) to = from + 1;
    if (way == FrameWay::Up) to = from - columns;
    if (way == FrameWay::Down) to = from + columns;
    m_frame = to >= 0 && to < static_cast<int>(m_areas.size()) ? to : from;
    m_pointer = {};
    m_time.Window().PutPointer(m_pointer);
    ShowFrame();
    m_time.Window().Refresh();
}

void ManySlides::ShowFrame() {
    const bool shown = m_frame >= 0 && !m_areas.empty();
    const std::size_t area = shown ? std::min(std::size_t(m_frame), m_areas.size() - 1) : 0;
    m_time.Window().SetFrame(shown ? m_areas[area].place : QRect());
}

} // namespace tarn
