#include "console/ListedPictures.h"

#include "common/patterns.h"

#include <filesystem>

namespace tarn {

namespace fs = std::filesystem;

std::optional<std::vector<std::string>> ListedPictures(const std::string& folder) {
    return ListedFiles(folder, kPictureTypes);
}

std::optional<std::vector<std::string>> ListedFiles(const std::string& folder,
                                                    std::string_view types) {
    const NamePatterns pictures(types);
    std::vector<std::string> names;
    std::error_code code;
    fs::directory_iterator at(folder, code);
    for (; !code && at != fs::directory_iterator(); at.increment(code)) {
        const std::string name = at->path().filename().string();
        std::error_code unknown;
        if (name.front() != '.' && pictures.Matches(name) && !at->is_directory(unknown))
            names.push_back(name);
    }
    if (code) return {};
    return InListOrder(std::move(names));
}

} // namespace tarn
