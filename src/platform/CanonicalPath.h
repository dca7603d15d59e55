// One spelling of a path, however it was named.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace tarn {

// Absolute, links followed as far as it is there; "" is the working folder.
inline std::string CanonicalPath(const std::string& path) {
    std::error_code code;
    const auto canonical = std::filesystem::weakly_canonical(path.empty() ? "." : path, code);
    return code ? path : canonical.string();
}

} // namespace tarn
