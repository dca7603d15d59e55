#include "night/NightPictures.h"

#include "common/paths.h"
#include "desk/batch/PictureNames.h"
#include "platform/Files.h"
#include "widgets/FileListBox.h"

namespace tarn {

namespace {

std::vector<std::string> PicturesAmong(const Context& m, const std::string& folder,
                                       const std::vector<std::string>& names) {
    std::vector<std::string> paths;
    for (const std::string& name : names)
        if (IsPictureName(m.state, name)) paths.push_back(JoinPath(folder, name));
    return paths;
}

} // namespace

std::vector<std::string> NightPictures(const Context& m) {
    const FileListBox& list = *m.controls.FileListBox;
    return PicturesAmong(m, list.Path(), list.Listed());
}

std::optional<std::vector<std::string>> NightPicturesOf(const Context& m, const std::string& folder,
                                                        std::string& error) {
    auto names = m.files.FileNames(folder, &error);
    if (!names) return std::nullopt;
    return PicturesAmong(m, folder, InListOrder(std::move(*names)));
}

} // namespace tarn
