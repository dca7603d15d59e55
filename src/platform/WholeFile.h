// A file read whole, as far as that is to be expected of its kind: what is larger was made to fill
// the memory, or is no such file.
#pragma once

#include "platform/Files.h"

namespace tarn {

// None, and the reason, when it cannot be read or has more than `most` bytes.
inline std::optional<std::string> ReadWhole(const Files& files, const std::string& path,
                                            std::size_t most, std::string* error = nullptr) {
    auto bytes = files.Read(path, most + 1, error);
    if (!bytes || bytes->size() <= most) return bytes;
    if (error) *error = "it has more than " + std::to_string(most) + " bytes";
    return {};
}

} // namespace tarn
