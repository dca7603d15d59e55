// The frames that a command line names.
#pragma once

#include <string>
#include <vector>

namespace tarn {

struct NamedFrame {
    std::string path;
    std::string fault; // of a folder that cannot be read: its row is this
};

// Files, and the pictures of folders, which come by name. A file that folders are looked through
// without may be named.
std::vector<NamedFrame> FramesOf(const std::vector<std::string>& operands,
                                 const std::string& without = {});

} // namespace tarn
