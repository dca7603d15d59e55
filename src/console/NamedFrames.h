// The frames that a command line names.
#pragma once

#include <string>
#include <vector>

namespace tarn {

struct NamedFrame {
    std::string path;
    std::string fault; // of a folder that cannot be read: its row is this
};

// Files, and the pictures of folders, which come by name.
std::vector<NamedFrame> FramesOf(const std::vector<std::string>& operands);

} // namespace tarn
