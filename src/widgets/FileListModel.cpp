#include "widgets/FileListModel.h"

#include "common/patterns.h"
#include "platform/QtText.h"

#include <QPainter>

#include <algorithm>
#include <utility>

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

bool FileListModel::Fits(const std::string& name) const {
    return NamePatterns(m_pattern).Matches(name);
}

std::optional<FileListModel::Reading> FileListModel::Look(const std::string& folder,
                                                          const std::string& pattern) const {
    Reading found;
    if (folder.empty()) return found;
    auto names = m_files.FileNames(folder);
    if (!names) return {};
    const NamePatterns patterns(pattern);
    for (std::string& name : *names) {
        if (!patterns.Matches(name))
            found.leftOut.push_back(std::move(name));
        else if (IsChosen(name))
            found.listed.push_back(std::move(name));
        else
            found.notChosen.push_back(std::move(name));
    }
    found.listed = InListOrder(std::move(found.listed));
    return found;
}

bool FileListModel::Read(const std::string& folder, const std::string& pattern) {
    auto reading = Look(folder, pattern);
    if (!reading) return false;
    beginResetModel();
    m_folder = folder;
    m_pattern = pattern;
    m_reading = std::move(*reading);
    m_names = Rows();
    endResetModel();
    return true;
}

std::vector<std::string> FileListModel::Rows() const {
    std::vector<std::string> names;
    std::copy_if(m_reading.listed.begin(), m_reading.listed.end(), std::back_inserter(names),
                 [this](const std::string& name) { return !m_keeps || m_keeps(name); });
    return arrange ? arrange(m_folder, std::move(names)) : names;
}

std::unordered_set<std::string> FileListModel::TakeIn(const std::vector<std::string>& names) {
    const NamePatterns patterns(m_pattern);
    std::unordered_set<std::string> known;
    for (const auto* group : {&m_reading.listed, &m_reading.leftOut, &m_reading.notChosen})
        known.insert(group->begin(), group->end());
    std::unordered_set<std::string> added;
    for (const std::string& name : names) {
        if (!known.insert(name).second) continue;
        if (!patterns.Matches(name)) {
            m_reading.leftOut.push_back(name);
        } else if (IsChosen(name)) {
            InsertInListOrder(m_reading.listed, name);
            added.insert(name);
        } else {
            m_reading.notChosen.push_back(name);
        }
    }
    return added;
}

FileListModel::Added FileListModel::Add(const std::vector<std::string>& names) {
    const std::unordered_set<std::string> added = TakeIn(names);
    if (added.empty()) return {};
    std::vector<std::string> rows = Rows();
    std::vector<int> places;
    std::size_t old = 0; // as far as the rows stay what they are
    for (std::size_t row = 0; row < rows.size(); ++row)
        if (old < m_names.size() && rows[row] == m_names[old])
            ++old;
        else if (added.contains(rows[row]))
            places.push_back(int(row));
        else
            break;
    if (old != m_names.size() || old + places.size() != rows.size()) {
        beginResetModel();
        m_names = std::move(rows);
        endResetModel();
        return {.isAnyListed = true, .isAnew = true};
    }
    for (const int row : places) {
        beginInsertRows({}, row, row);
        m_names.insert(m_names.begin() + row, rows[std::size_t(row)]);
        endInsertRows();
    }
    return {.isAnyListed = true, .rows = std::move(places)};
}

bool FileListModel::Rearrange() {
    std::vector<std::string> rows = Rows();
    if (rows == m_names) return false;
    beginResetModel();
    m_names = std::move(rows);
    endResetModel();
    return true;
}

void FileListModel::Narrow(std::function<bool(const std::string&)> keeps) {
    beginResetModel();
    m_keeps = std::move(keeps);
    m_names = Rows();
    endResetModel();
}

bool FileListModel::LeavesOut(const std::string& name) const {
    const auto& all = m_reading.listed;
    return RowOf(name) < 0 && std::find(all.begin(), all.end(), name) != all.end();
}

bool FileListModel::DiffersFromDisk() {
    auto now = Look(m_folder, m_pattern);
    if (!now) return true;
    m_reading.leftOut = std::move(now->leftOut);
    m_reading.notChosen = std::move(now->notChosen);
    return now->listed != m_reading.listed;
}

int FileListModel::RowOf(const std::string& name) const {
    const auto at = std::find(m_names.begin(), m_names.end(), name);
    return at == m_names.end() ? -1 : static_cast<int>(at - m_names.begin());
}

int FileListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Count();
}

Qt::ItemFlags FileListModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags own = QAbstractListModel::flags(index);
    return index.isValid() ? own | Qt::ItemIsDragEnabled : own;
}

std::string FileListModel::Spoken(const std::string& name) const {
    std::string text = name;
    if (hasNote && hasNote(name)) text += ", with note";
    if (spokenMark)
        if (const std::string mark = spokenMark(name); !mark.empty()) text += ", " + mark;
    return text;
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
    if (role == Qt::AccessibleTextRole) return ToQt(Spoken(Text(index.row())));
    if (role == Qt::ToolTipRole) return ToToolTip(Text(index.row()));
    return {};
}

} // namespace tarn
