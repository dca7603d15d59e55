#include "console/StackTarget.h"

#include "common/text.h"
#include "imaging/fits/KeptCards.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>

#include <unistd.h>

namespace tarn {

namespace {

namespace fs = std::filesystem;

// What is replaced: the target itself, or what differs from it in the case of its name alone.
std::optional<fs::path> StandsAt(const fs::path& target, const fs::path& folder) {
    std::error_code code;
    if (fs::exists(fs::symlink_status(target, code))) return target;
    const std::string name = FoldCase(target.filename().string());
    for (fs::directory_iterator at(folder, code), end; !code && at != end; at.increment(code))
        if (FoldCase(at->path().filename().string()) == name) return at->path();
    return std::nullopt;
}

} // namespace

std::string CheckTarget(const std::string& target, std::vector<NamedFrame>& frames) {
    const fs::path path(target);
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::error_code code;
    if (!fs::is_directory(folder, code)) return "its folder is not there";
    if (::access(folder.c_str(), W_OK) != 0)
        return "its folder cannot be written to: " + std::string(std::strerror(errno));
    const auto stands = StandsAt(path, folder);
    if (!stands) return {};
    if (fs::is_directory(*stands, code)) return "a folder of that name stands there";
    const auto isThere = [&](const NamedFrame& frame) {
        std::error_code untold;
        return fs::equivalent(frame.path, *stands, untold);
    };
    if (std::none_of(frames.begin(), frames.end(), isThere)) return {};
    if (!IsSumOfFrames(stands->string())) return "is itself one of the frames";
    std::erase_if(frames, isThere);
    return {};
}

} // namespace tarn
