#include "app/start/StartPath.h"

#include "common/paths.h"
#include "platform/Files.h"

namespace tarn {

std::string FirstRunPath(const Files& files) {
    const std::string pictures = files.PicturesFolder();
    return JoinPath(pictures.empty() ? files.HomeFolder() : pictures, kFirstRow);
}

namespace {

std::string WithoutQuotes(std::string text) {
    // Only the end is looked at: what stands in front goes with it.
    if (text.size() >= 2 && text.back() == '"') text = text.substr(1, text.size() - 2);
    return text;
}

} // namespace

std::string HandedOver(const std::string& argument, const Files& files) {
    return argument.empty() ? argument : '"' + files.Absolute(WithoutQuotes(argument)) + '"';
}

StartPath WorkOutStart(const std::string& argument, const std::string& lastPath,
                       const Files& files) {
    StartPath start;
    if (argument.empty()) {
        start.spec = FolderOf(lastPath).empty() ? FirstRunPath(files) : lastPath;
        start.folder = WithoutTrailingSeparator(FolderOf(start.spec));
        start.name = LastPart(start.spec);
        return start;
    }
    start.spec = WithoutQuotes(argument);
    const std::string path = WithoutTrailingSeparator(files.Absolute(start.spec));
    start.folder = path;
    start.name = kFirstRow;
    if (files.IsFolder(path)) return start;
    const std::string folder = FolderOf(path);
    if (files.Exists(path)) {
        start.folder = folder;
        start.name = LastPart(path);
    } else if (files.IsFolder(folder)) {
        start.folder = folder;
        start.missing = path;
    }
    return start;
}

} // namespace tarn
