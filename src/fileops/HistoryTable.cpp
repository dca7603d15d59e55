#include "fileops/HistoryTable.h"

#include "common/dates.h"
#include "history/CommandText.h"
#include "platform/QtText.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::int64_t kAtOnce = 500; // rows
const char* const kNames[] = {"When", "What", "Files", "State"};
enum Column { When, What, FileCount, State };

} // namespace

std::vector<CommandRow> HistoryTable::Next() const {
    return m_history.List({kAtOnce, m_rows.empty() ? 0 : m_rows.back().id, m_text});
}

void HistoryTable::Show(const std::string& text) {
    beginResetModel();
    m_text = text;
    m_rows.clear();
    m_rows = Next();
    m_isWhole = m_rows.size() < std::size_t(kAtOnce);
    endResetModel();
}

const CommandRow* HistoryTable::RowAt(int row) const {
    return row >= 0 && std::size_t(row) < m_rows.size() ? &m_rows[std::size_t(row)] : nullptr;
}

int HistoryTable::RowOf(std::int64_t id) const {
    const auto at = std::find_if(m_rows.begin(), m_rows.end(),
                                 [&](const CommandRow& row) { return row.id == id; });
    return at == m_rows.end() ? -1 : int(at - m_rows.begin());
}

int HistoryTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int HistoryTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(std::size(kNames));
}

QVariant HistoryTable::data(const QModelIndex& index, int role) const {
    const CommandRow* row = RowAt(index.row());
    if (!row) return {};
    if (role == Qt::TextAlignmentRole && index.column() == FileCount)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole && index.column() == What)
        return ToToolTip(row->what + "\n" + row->folder);
    if (role != Qt::DisplayRole) return {};
    switch (index.column()) {
    case When:
        return ToQt(FormatDateText(FromFileTime(row->began)));
    case What:
        return ToQt(row->what);
    case FileCount:
        return QString::number(row->files);
    default:
        return ToQt(StateText(*row));
    }
}

QVariant HistoryTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return QString::fromLatin1(kNames[section]);
}

bool HistoryTable::canFetchMore(const QModelIndex& parent) const {
    return !parent.isValid() && !m_isWhole;
}

void HistoryTable::fetchMore(const QModelIndex&) {
    std::vector<CommandRow> more = Next();
    m_isWhole = more.size() < std::size_t(kAtOnce);
    if (more.empty()) return;
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + more.size()) - 1);
    m_rows.insert(m_rows.end(), more.begin(), more.end());
    endInsertRows();
}

} // namespace tarn
