#include "widgets/FileListModel.h"

#include "common/patterns.h"
#include "platform/QtText.h"

#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kMarkSide = 64; // pixels, scaled down by the view

// A small written page, in a colour that stands out from light, dark and selected rows.
QIcon NoteMark() {
    QPixmap pixmap(kMarkSide, kMarkSide);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 4));
    painter.setBrush(QColor(0x2F, 0x74, 0xC0));
    painter.drawRoundedRect(QRect(8, 2, 46, 58), 6, 6);
    painter.setPen(QPen(Qt::white, 7));
    for (const int y : {20, 40}) painter.drawLine(19, y, 43, y);
    return QIcon(pixmap);
}

QIcon NoMark() {
    QPixmap pixmap(kMarkSide, kMarkSide);
    pixmap.fill(Qt::transparent);
    return QIcon(pixmap);
}

} // namespace

bool FileListModel::IsChosen(const std::string& name) const {
    if (noteChoice == NoteChoice::All || !hasNote) return true;
    return hasNote(name) == (noteChoice == NoteChoice::WithNote);
}

std::optional<std::vector<std::string>> FileListModel::Matching(const std::string& folder,
                                                                const std::string& pattern) const {
    std::vector<std::string> found;
    if (folder.empty()) return found;
    auto names = m_files.FileNames(folder);
    if (!names) return {};
    const NamePatterns patterns(pattern);
    std::copy_if(std::make_move_iterator(names->begin()), std::make_move_iterator(names->end()),
                 std::back_inserter(found),
                 [&](const std::string& name) { return patterns.Matches(name) && IsChosen(name); });
    return InListOrder(std::move(found));
}

bool FileListModel::Read(const std::string& folder, const std::string& pattern) {
    auto names = Matching(folder, pattern);
    if (!names) return false;
    beginResetModel();
    m_folder = folder;
    m_pattern = pattern;
    m_names = std::move(*names);
    endResetModel();
    return true;
}

bool FileListModel::DiffersFromDisk() const {
    const auto names = Matching(m_folder, m_pattern);
    return !names || *names != m_names;
}

int FileListModel::RowOf(const std::string& name) const {
    const auto at = std::find(m_names.begin(), m_names.end(), name);
    return at == m_names.end() ? -1 : static_cast<int>(at - m_names.begin());
}

int FileListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Count();
}

QVariant FileListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= Count()) return {};
    if (role == Qt::DisplayRole) return ToQt(Text(index.row()));
    if (role == Qt::DecorationRole && hasNote) {
        if (m_mark.isNull()) {
            m_mark = NoteMark();
            m_noMark = NoMark();
        }
        return hasNote(Text(index.row())) ? m_mark : m_noMark;
    }
    if (role == Qt::AccessibleTextRole && hasNote && hasNote(Text(index.row())))
        return ToQt(Text(index.row()) + ", with note");
    if (role == Qt::ToolTipRole) return ToToolTip(Text(index.row()));
    return {};
}

} // namespace tarn
