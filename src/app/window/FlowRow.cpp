#include "app/window/FlowRow.h"

#include <QPushButton>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kLineGap = 3;

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
    constexpr int kAroundText = 16;
    constexpr int kAroundIcon = 4;
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

int FlowRow::GapBefore(std::size_t cell, const Cell* before) const {
    if (!before) return 0;
    return before->group == m_cells[cell].group ? m_gap : m_groupGap;
}

bool FlowRow::Counts(const Cell& cell) {
    return cell.reserved > 0 || !cell.item->isEmpty();
}

int FlowRow::LineWidth() const {
    int width = 0;
    const Cell* before = nullptr;
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
        if (!Counts(m_cells[i])) continue;
        width += GapBefore(i, before) + std::max(LeastWidth(*m_cells[i].item), m_cells[i].reserved);
        before = &m_cells[i];
    }
    return width;
}

std::vector<FlowRow::Placed> FlowRow::Place(int width, bool all, int& height) const {
    std::vector<Placed> placed;
    std::size_t lineStart = 0; // in `placed`
    int x = 0;
    int y = 0;
    int lineHeight = 0;
    const auto endLine = [&] {
        // What is left of the line goes to the controls that were given less than they want.
        int spare = width - x;
        int shift = 0;
        for (std::size_t i = lineStart; i < placed.size(); ++i) {
            QRect& place = placed[i].place;
            const int lack = Wanted(*placed[i].item).width() - place.width();
            const int more = std::clamp(spare / int(placed.size() - i), 0, std::max(0, lack));
            place.translate(shift, (lineHeight - place.height()) / 2);
            place.setWidth(place.width() + more);
            shift += more;
            spare -= more;
        }
    };
    const Cell* before = nullptr;
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
        QLayoutItem* item = m_cells[i].item;
        if (all ? !Counts(m_cells[i]) : item->isEmpty()) continue;
        const int counted = std::max(LeastWidth(*item), all ? m_cells[i].reserved : 0);
        const int least = std::min(counted, std::max(width, 1));
        int left = x + GapBefore(i, before);
        if (before && left + least > width) {
            endLine();
            y += lineHeight + kLineGap;
            lineStart = placed.size();
            left = lineHeight = 0;
        }
        const int itemHeight = Wanted(*item).height();
        placed.push_back({item, QRect(left, y, least, itemHeight)});
        lineHeight = std::max(lineHeight, itemHeight);
        x = left + least;
        before = &m_cells[i];
    }
    endLine();
    height = y + lineHeight;
    return placed;
}

int FlowRow::heightForWidth(int width) const {
    int height = 0;
    Place(width, true, height);
    return height;
}

QSize FlowRow::sizeHint() const {
    int height = 0;
    Place(QWIDGETSIZE_MAX, true, height);
    return {LineWidth(), height};
}

QSize FlowRow::minimumSize() const {
    QSize least;
    for (const Cell& cell : m_cells)
        if (Counts(cell))
            least = least.expandedTo(QSize(std::max(LeastWidth(*cell.item), cell.reserved),
                                           Wanted(*cell.item).height()));
    return least;
}

void FlowRow::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    int height = 0;
    for (const Placed& each : Place(rect.width(), false, height))
        each.item->setGeometry(each.place.translated(rect.topLeft()));
}

} // namespace tarn
