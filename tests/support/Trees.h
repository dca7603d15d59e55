// Folders of a test: filled from a list, read back as one.
#pragma once

#include "support/TestFolder.h"

#include <cstdlib>
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

inline std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return "(none)";
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

// The wastebasket that all tests of one run share, and a file in it.
inline std::string Wastebasket() {
    return std::string(std::getenv("XDG_DATA_HOME")) + "/Trash";
}
inline std::string Trashed(const std::string& name) {
    return BytesOf(Wastebasket() + "/files/" + name);
}

inline void Fill(const TestFolder& folder, const Tree& tree) {
    for (const auto& [name, bytes] : tree) folder.Write(name, bytes);
}

} // namespace tarn::testing
