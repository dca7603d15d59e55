#include "web/FileEntries.h"

#include "common/fit.h"
#include "common/numbers.h"
#include "common/paths.h"
#include "platform/ProgramFiles.h"
#include "web/PageBuild.h"
#include "web/PageText.h"

namespace tarn {

GallerySources SourcesOf(DiskFacts& facts,
                         std::function<std::string(const std::string&)> noteBytes) {
    return {[&](const std::string& path) { return facts.UprightSize(path); },
            [&](const std::string& path) { return facts.FileBytes(path); }, std::move(noteBytes),
            [&](const std::string& path) { return facts.PanelRows(path); }};
}

EntryFacts EntryOf(DiskFacts& disk, const Files& files, const std::string& path, int boxWidth,
                   int boxHeight) {
    EntryFacts facts;
    facts.name = ToPageBytes(LastPart(path));
    facts.type = FileTypeOf(path);
    for (const std::string& row : disk.PanelRows(path)) facts.panel.push_back(ToPageBytes(row));
    if (IsTextEntry(facts.type)) {
        facts.lines = TextFileLines(files, path);
        return facts;
    }
    const bool video = facts.type == ".MP4";
    // A clip's image is the one beside it, which may be the user's own.
    const std::string beside = JoinPath(FolderOf(path), kVideoPicture);
    const std::string still = files.Exists(beside) ? beside : ProgramFile(kVideoPicture);
    const auto [width, height] = disk.UprightSize(video ? still : path);
    if (video) facts.fileSizeText = VideoSizeText(disk.FileBytes(path));
    SetEntrySize(facts, width, height, boxWidth, boxHeight);
    return facts;
}

void SetEntrySize(EntryFacts& facts, int width, int height, int boxWidth, int boxHeight) {
    facts.width = width;
    facts.height = height;
    const PreviewFit fit = FitPreview(width, height, boxWidth, boxHeight);
    facts.previewWidth = fit.width;
    facts.previewHeight = fit.height;
    facts.sizeText = std::to_string(width) + " x " + std::to_string(height);
}

} // namespace tarn
