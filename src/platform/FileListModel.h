// Snapshot of the files of one folder that fit a pattern, sorted by name in any case, each once.
#pragma once

#include "platform/Files.h"

#include <QAbstractListModel>

#include <optional>
#include <string>
#include <vector>

namespace tarn {

class FileListModel : public QAbstractListModel {
public:
    explicit FileListModel(const Files& files) : m_files(files) {}

    // Reads the folder again with this pattern: one reading of the directory, no file touched.
    // False when it cannot be read: everything stays.
    bool Read(const std::string& folder, const std::string& pattern);

    // Whether the folder now holds other names than the snapshot.
    bool DiffersFromDisk() const;

    const std::string& Folder() const { return m_folder; }
    const std::string& Pattern() const { return m_pattern; }
    int Count() const { return static_cast<int>(m_names.size()); }
    const std::string& Text(int row) const { return m_names[static_cast<std::size_t>(row)]; }
    int RowOf(const std::string& name) const; // exact name; -1 when it is not listed

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::optional<std::vector<std::string>> Matching(const std::string& folder,
                                                     const std::string& pattern) const;

    const Files& m_files;
    std::string m_folder;
    std::string m_pattern;
    std::vector<std::string> m_names;
};

} // namespace tarn
