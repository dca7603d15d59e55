// A notes folder of the test's own on the real file system, with calls that can be made to fail.
#pragma once

#include "support/ForwardingFiles.h"
#include "support/TestFolder.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tarn::testing {

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
