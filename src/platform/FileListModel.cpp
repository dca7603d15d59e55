#include "platform/FileListModel.h"

#include "common/patterns.h"
#include "common/text.h"
#include "platform/QtText.h"

#include <algorithm>

namespace tarn {

namespace {

// Sorted by the folded name; names that differ in case alone by their bytes, so that the order is
// the same each time.
std::vector<std::string> Sorted(std::vector<std::string> names) {
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) keyed.emplace_back(FoldCase(name), std::move(name));
    std::sort(keyed.begin(), keyed.end());
    names.clear();
    for (auto& entry : keyed) names.push_back(std::move(entry.second));
    return names;
}

} // namespace

bool FileListModel::Read(const std::string& folder, const std::string& pattern) {
    std::vector<std::string> found;
    if (!folder.empty()) {
        auto names = m_files.FileNames(folder);
        if (!names) return false;
        const NamePatterns patterns(pattern);
        std::copy_if(std::make_move_iterator(names->begin()), std::make_move_iterator(names->end()),
                     std::back_inserter(found),
                     [&](const std::string& name) { return patterns.Matches(name); });
    }
    beginResetModel();
    m_folder = folder;
    m_pattern = pattern;
    m_names = Sorted(std::move(found));
    endResetModel();
    return true;
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
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return ToQt(Text(index.row()));
    return {};
}

} // namespace tarn
