#include "thumbnails/ThumbFolder.h"

#include "common/paths.h"
#include "common/patterns.h"
#include "thumbnails/ThumbNames.h"

#include <algorithm>
#include <filesystem>

namespace tarn {

namespace {

namespace fs = std::filesystem;

bool LiesStrictlyBelow(const fs::path& folder, const fs::path& above) {
    const auto [rest, last] =
        std::mismatch(above.begin(), above.end(), folder.begin(), folder.end());
    return rest == above.end() && last != folder.end() && !last->empty();
}

void Count(ClearFaults& faults, const std::string& name, const std::string& error) {
    if (++faults.count == 1) faults.first = "'" + name + "' - " + error;
}

} // namespace

bool IsSubFolderName(const std::string& subFolder) {
    const fs::path path(subFolder);
    if (subFolder.empty() || path.is_absolute()) return false;
    const fs::path plain = path.lexically_normal();
    return plain != "." && plain != "./" && *plain.begin() != "..";
}

std::string ClearFaults::Text() const {
    return count == 0 ? std::string() : std::to_string(count) + " files remain: " + first;
}

std::string ThumbnailFolder(const Files& files, const std::string& pictures,
                            const std::string& subFolder, const std::string& notes) {
    if (pictures.empty() || !IsSubFolderName(subFolder)) return {};
    std::string folder = JoinPath(pictures, subFolder);
    std::error_code code;
    const fs::path above = fs::canonical(pictures, code);
    if (code) return {};
    const fs::path real = fs::weakly_canonical(folder, code);
    if (code || !LiesStrictlyBelow(real, above)) return {};
    return files.IsSameFile(folder, notes) ? std::string() : folder;
}

void MakeThumbnailFolder(Files& files, const std::string& pictures, const std::string& subFolder) {
    std::string folder = pictures;
    for (const std::string& part : PathParts(subFolder)) {
        folder = JoinPath(folder, part);
        std::string ignored; // it may stand already
        files.MakeFolder(folder, &ignored);
    }
}

ClearFaults ClearThumbnails(Files& files, const std::string& folder) {
    ClearFaults faults;
    for (const std::string& name : files.FileNames(folder).value_or(std::vector<std::string>())) {
        const std::string path = JoinPath(folder, name);
        std::string error;
        const bool gone =
            IsThumbnailName(name) ? files.Remove(path, &error) : files.Trash(path, &error);
        if (!gone) Count(faults, name, error);
    }
    return faults;
}

std::vector<std::string> GalleryPages(const Files& files, const std::string& pictures) {
    auto names = files.FileNames(pictures).value_or(std::vector<std::string>());
    const NamePatterns pages("Image*.html");
    std::erase_if(names, [&](const std::string& name) { return !pages.Matches(name); });
    return names;
}

void ThrowAwayPages(Files& files, const std::string& pictures, ClearFaults& faults) {
    for (const std::string& name : GalleryPages(files, pictures)) {
        std::string error;
        if (!files.Trash(JoinPath(pictures, name), &error)) Count(faults, name, error);
    }
}

} // namespace tarn
