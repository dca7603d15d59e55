#include "night/NightTable.h"

#include "platform/QtText.h"

#include <QPalette>

#include <numeric>

namespace tarn {

namespace {

const NightColumn& ColumnAt(int section) {
    return NightColumns()[std::size_t(section)];
}

bool IsNumber(const NightColumn& column) {
    return column.value && !column.text;
}

} // namespace

void NightTable::SetFrames(const std::vector<NightFrame>& frames) {
    beginResetModel();
    m_frames = &frames;
    m_order = SortedBy(frames, ColumnAt(m_column), m_descending);
    m_rows.resize(m_order.size());
    for (std::size_t row = 0; row < m_order.size(); ++row) m_rows[m_order[row]] = int(row);
    endResetModel();
}

void NightTable::FramesChanged() {
    if (!m_frames || m_frames->empty()) return;
    Arrange();
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int NightTable::RowOf(std::size_t frame) const {
    return frame < m_rows.size() ? m_rows[frame] : -1;
}

// What is selected stays so, wherever it goes.
void NightTable::Arrange() {
    std::vector<std::size_t> order = SortedBy(*m_frames, ColumnAt(m_column), m_descending);
    if (order == m_order) return;
    emit layoutAboutToBeChanged();
    const std::vector<std::size_t> before = std::exchange(m_order, std::move(order));
    for (std::size_t row = 0; row < m_order.size(); ++row) m_rows[m_order[row]] = int(row);
    const QModelIndexList from = persistentIndexList();
    QModelIndexList to;
    for (const QModelIndex& old : from)
        to.append(index(m_rows[before[std::size_t(old.row())]], old.column()));
    changePersistentIndexList(from, to);
    emit layoutChanged();
}

int NightTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_order.size());
}

int NightTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(NightColumns().size());
}

QVariant NightTable::data(const QModelIndex& index, int role) const {
    const NightColumn& column = ColumnAt(index.column());
    const NightFrame& frame = (*m_frames)[FrameOf(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return ToQt(CellText(frame, column));
    case Qt::TextAlignmentRole:
        return IsNumber(column) ? int(Qt::AlignRight | Qt::AlignVCenter)
                                : int(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ToolTipRole: {
        const std::string text = CellText(frame, column);
        return text.empty() ? QVariant() : QVariant(ToToolTip(text));
    }
    case Qt::ForegroundRole: // rejected ones step back
        return frame.mark.decision == Decision::Reject
                   ? QVariant(QPalette().color(QPalette::Disabled, QPalette::Text))
                   : QVariant();
    default:
        return {};
    }
}

QVariant NightTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    const NightColumn& column = ColumnAt(section);
    if (role == Qt::DisplayRole) return ToQt(column.title);
    if (role == Qt::ToolTipRole) return ToToolTip(column.tip);
    if (role == Qt::TextAlignmentRole)
        return IsNumber(column) ? int(Qt::AlignRight | Qt::AlignVCenter)
                                : int(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

void NightTable::sort(int column, Qt::SortOrder order) {
    if (column < 0) return;
    m_column = column;
    m_descending = order == Qt::DescendingOrder;
    if (m_frames) Arrange();
}

} // namespace tarn
