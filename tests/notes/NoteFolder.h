// A notes folder of the test's own on the real file system, with calls that can be made to fail.
#pragma once

#include "support/ForwardingFiles.h"
#include "support/TestFolder.h"

#include <QStandardPaths>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace tarn::testing {

inline std::string BytesOf(const std::string& path) {
    return MakeFiles()->Read(path, std::numeric_limits<std::size_t>::max()).value_or("(none)");
}

// A file of the wastebasket that all tests of one run share.
inline std::string Trashed(const std::string& name) {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return BytesOf(data.toStdString() + "/Trash/files/" + name);
}

struct NoteFolder {
    TestFolder folder;
    ForwardingFiles files;

    std::string At(const std::string& name) const { return folder.Path() + "/" + name; }
    std::string Bytes(const std::string& name) const { return BytesOf(At(name)); }
    std::vector<std::string> Names() const {
        std::vector<std::string> names = files.FileNames(folder.Path(), nullptr).value();
        std::sort(names.begin(), names.end());
        return names;
    }
};

} // namespace tarn::testing
