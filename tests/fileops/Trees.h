// Folders of a test: filled from a list, read back as one.
#pragma once

#include "support/TestFolder.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace tarn::testing {

using Tree = std::map<std::string, std::string>; // contents by name

inline Tree ReadTree(const std::string& folder) {
    Tree tree;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ostringstream bytes;
        bytes << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        tree[entry.path().filename().string()] = bytes.str();
    }
    return tree;
}

inline void Fill(const TestFolder& folder, const Tree& tree) {
    for (const auto& [name, bytes] : tree) folder.Write(name, bytes);
}

} // namespace tarn::testing
