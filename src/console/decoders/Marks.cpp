#include "console/decoders/Marks.h"

#include "common/mark_text.h"
#include "common/paths.h"
#include "console/decoders/OpenHistory.h"
#include "history/Changes.h"
#include "marks/MarkFiles.h"

#include <map>

namespace tarn {

namespace {

// Calls `work` with each path, made absolute, and the sidecars of its folder, which is read once.
template <typename Work>
std::vector<FileMark> ForEach(const std::vector<std::string>& paths, Files& files,
                              const Work& work) {
    std::map<std::string, SidecarNames> folders;
    std::vector<FileMark> all;
    for (const std::string& path : paths) {
        FileMark& file = all.emplace_back(FileMark{path, {}, {}});
        const std::string picture = files.Absolute(path);
        if (!files.Look(picture, &file.error)) continue;
        if (files.IsFolder(picture)) {
            file.error = "is a folder";
            continue;
        }
        const std::string folder = FolderOf(picture);
        auto sidecars = folders.find(folder);
        if (sidecars == folders.end()) {
            const auto names = SidecarsIn(files, folder, &file.error);
            if (!names) continue;
            sidecars = folders.emplace(folder, *names).first;
        }
        work(files, picture, sidecars->second, file);
    }
    return all;
}

std::string OfSidecar(const std::string& error) {
    return error.empty() ? error : "its sidecar: " + error;
}

} // namespace

std::vector<FileMark> ReadMarks(const std::vector<std::string>& paths) {
    const std::unique_ptr<Files> disk = MakeFiles();
    return ForEach(paths, *disk,
                   [](const Files& files, const std::string& picture, const SidecarNames& sidecars,
                      FileMark& file) {
                       const FoundMark found = ReadMark(files, picture, sidecars);
                       file.mark = found.mark;
                       file.error = OfSidecar(found.error);
                   });
}

std::vector<FileMark> WriteMarks(const std::vector<std::string>& paths, const MarkChange& change) {
    OpenHistory open;
    Changes changes(open.history, SaidOfChange(change) + " - " + std::to_string(paths.size()) +
                                      (paths.size() == 1 ? " file" : " files"));
    return ForEach(paths, changes,
                   [&](Files& files, const std::string& picture, const SidecarNames& sidecars,
                       FileMark& file) {
                       const WrittenMark written = WriteMark(files, picture, sidecars, change);
                       file.mark = written.mark;
                       if (!written.done) file.error = OfSidecar(written.error);
                   });
}

} // namespace tarn
