#include "app/window/FlowRow.h"

#include <QPushButton>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kLineGap = 3;     // between two lines, logical pixels
constexpr int kAroundText = 16; // the room that a button's text needs in every style
constexpr int kAroundIcon = 4;

// What a widget asks for, hidden or not: the item of a hidden one says nothing.
QSize Least(const QLayoutItem& item) {
    const QWidget& widget = *const_cast<QLayoutItem&>(item).widget();
    return widget.minimumSizeHint()
        .expandedTo(widget.minimumSize())
        .boundedTo(widget.maximumSize());
}

QSize Wanted(const QLayoutItem& item) {
    const QWidget& widget = *const_cast<QLayoutItem&>(item).widget();
    return widget.sizeHint().expandedTo(widget.minimumSize()).boundedTo(widget.maximumSize());
}

// Styles give a button room for longer words than these: it may be as narrow as its text.
int LeastWidth(const QLayoutItem& item) {
    const auto* button = qobject_cast<QPushButton*>(const_cast<QLayoutItem&>(item).widget());
    if (!button) return Least(item).width();
    const int text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width();
    const int icon = button->icon().isNull() ? 0 : button->iconSize().width() + kAroundIcon;
    return text + icon + kAroundText;
}

} // namespace

FlowRow::FlowRow(QWidget* on, int gap, int groupGap)
    : QLayout(on), m_gap(gap), m_groupGap(groupGap) {
    setContentsMargins(0, 0, 0, 0);
}

FlowRow::~FlowRow() {
    for (const Cell& cell : m_cells) delete cell.item;
}

void FlowRow::Add(QWidget* widget, int group) {
    m_group = group;
    addWidget(widget);
}

void FlowRow::addItem(QLayoutItem* item) {
    m_cells.push_back({item, m_group, 0});
    invalidate();
}

void FlowRow::Reserve(const QWidget* widget, int width) {
    for (Cell& cell : m_cells)
        if (cell.item->widget() == widget) cell.reserved = width;
    invalidate();
}

QLayoutItem* FlowRow::itemAt(int index) const {
    return index >= 0 && index < count() ? m_cells[std::size_t(index)].item : nullptr;
}

QLayoutItem* FlowRow::takeAt(int index) {
    QLayoutItem* item = itemAt(index);
    if (item) m_cells.erase(m_cells.begin() + index);
    return item;
}

bool FlowRow::Counts(const Cell& cell, Room room) {
    return !cell.item->isEmpty() || (room == Room::Kept && cell.reserved > 0);
}

QSize FlowRow::LeastSize(const Cell& cell, Room room) {
    const int width = LeastWidth(*cell.item);
    return {room == Room::Kept ? std::max(width, cell.reserved) : width,
            Wanted(*cell.item).height()};
}

// Of the controls from this one on that belong to its group.
int FlowRow::GroupWidth(const Cell* first, Room room) const {
    int width = -m_gap;
    for (const Cell* each = first; each != m_cells.data() + m_cells.size(); ++each)
        if (each->group != first->group)
            break;
        else if (Counts(*each, room))
            width += m_gap + LeastSize(*each, room).width();
    return width;
}

// The controls at their least sizes, each in the first line that has room for it; a group begins a
// line of its own where that keeps it together.
std::vector<FlowRow::Line> FlowRow::Wrap(int width, Room room) const {
    std::vector<Line> lines;
    const Cell* before = nullptr;
    for (const Cell& cell : m_cells) {
        if (!Counts(cell, room)) continue;
        if (before && before->group != cell.group) {
            const int group = GroupWidth(&cell, room);
            if (group <= width && lines.back().width + m_groupGap + group > width) {
                lines.emplace_back();
                before = nullptr;
            }
        }
        QSize size = LeastSize(cell, room);
        size.setWidth(std::min(size.width(), std::max(width, 1)));
        int left = 0;
        if (before) left = lines.back().width + (before->group == cell.group ? m_gap : m_groupGap);
        if (lines.empty() || left + size.width() > width) {
            lines.emplace_back();
            left = 0;
        }
        Line& line = lines.back();
        line.placed.push_back({cell.item, QRect(QPoint(left, 0), size)});
        line.width = left + size.width();
        line.height = std::max(line.height, size.height());
        before = &cell;
    }
    return lines;
}

int FlowRow::HeightOf(const std::vector<Line>& lines) {
    int height = kLineGap * std::max(0, int(lines.size()) - 1);
    for (const Line& line : lines) height += line.height;
    return height;
}

// What is left of the line goes to the controls that were given less than they want.
void FlowRow::Spread(Line& line, int width, int top) {
    int spare = width - line.width;
    int shift = 0;
    int waiting = int(line.placed.size());
    for (auto& [item, place] : line.placed) {
        const int lack = Wanted(*item).width() - place.width();
        const int more = std::clamp(spare / waiting--, 0, std::max(0, lack));
        place.translate(shift, top + (line.height - place.height()) / 2);
        place.setWidth(place.width() + more);
        shift += more;
        spare -= more;
    }
}

int FlowRow::LineWidth() const {
    return sizeHint().width();
}

int FlowRow::WidthFor(int lines) const {
    int tooNarrow = 0;
    int width = LineWidth();
    while (width - tooNarrow > 1) {
        const int middle = (width + tooNarrow) / 2;
        (int(Wrap(middle, Room::Kept).size()) <= lines ? width : tooNarrow) = middle;
    }
    return std::max(width, minimumSize().width());
}

int FlowRow::heightForWidth(int width) const {
    return HeightOf(Wrap(width, Room::Kept));
}

QSize FlowRow::sizeHint() const {
    const auto lines = Wrap(QWIDGETSIZE_MAX, Room::Kept); // one, or none
    return lines.empty() ? QSize(0, 0) : QSize(lines.front().width, lines.front().height);
}

QSize FlowRow::minimumSize() const {
    QSize least;
    for (const Cell& cell : m_cells)
        if (Counts(cell, Room::Kept)) least = least.expandedTo(LeastSize(cell, Room::Kept));
    return least;
}

void FlowRow::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    int top = rect.top();
    for (Line& line : Wrap(rect.width(), Room::Shown)) {
        Spread(line, rect.width(), top);
        for (const Placed& each : line.placed)
            each.item->setGeometry(each.place.translated(rect.left(), 0));
        top += line.height + kLineGap;
    }
}

} // namespace tarn
