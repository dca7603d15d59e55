#include "notes/NotesFolderFiles.h"

#include "common/paths.h"
#include "common/text.h"
#include "notes/NoteText.h"
#include "platform/WholeFile.h"

namespace tarn {

namespace {

void AddFailed(NotesRun& run, const std::string& path, const std::string& error) {
    if (run.failed.empty()) run.error = error;
    run.failed.push_back(path);
}

} // namespace

std::optional<LoadedNote> NotesFolderFiles::Read(const std::string& path) const {
    auto bytes = m_files.Read(path, kNoteReadLimit);
    if (!bytes) return {};
    return LoadedNote{path, std::move(*bytes)};
}

bool NotesFolderFiles::Update(Files& files, LoadedNote& note, const std::string& bytes,
                              std::string* error) {
    if (!SaveNoteFile(files, note.path, bytes, note, error)) return false;
    note.bytes = bytes;
    return true;
}

bool NotesFolderFiles::Delete(Files& files, const std::string& path, std::string* error) {
    return files.Trash(path, error);
}

bool NotesFolderFiles::IsNote(const std::string& path) const {
    return FoldCase(LastPart(path)) != FoldCase(m_formatFile);
}

void NotesFolderFiles::FixOne(Files& files, const std::string& path, NotesRun& run) {
    std::string error;
    const auto bytes = ReadWhole(files, path, kLargestNote, &error);
    const auto repaired = bytes ? WithoutQuotes(*bytes) : std::nullopt;
    if (bytes && !repaired) return;
    // Nobody has seen this file: the old one is kept.
    if (repaired && SaveNoteFile(files, path, *repaired, {}, &error))
        run.changed.push_back(path);
    else
        AddFailed(run, path, error);
}

NotesRun NotesFolderFiles::FixAll(Files& files, const std::vector<std::string>& paths,
                                  const GoOn& goOn) {
    NotesRun run;
    std::size_t number = 0;
    for (const std::string& path : paths) {
        if (IsNote(path)) FixOne(files, path, run);
        if (!goOn(++number)) break;
    }
    return run;
}

void NotesFolderFiles::ConvertOne(Files& files, const std::string& path, const NoteIndex& index,
                                  NotesRun& run) {
    const std::string to = path.substr(0, path.size() - 3) + "enf";
    const auto name = index.Find(LastPart(to));
    const std::string stands = name ? JoinPath(FolderOf(to), *name) : to;
    std::string error;
    if ((files.Exists(stands) && !files.Trash(stands, &error)) || !files.Rename(path, to, &error))
        return AddFailed(run, path, error);
    run.changed.push_back(to);
    run.renamed[path] = to;
}

NotesRun NotesFolderFiles::Convert(Files& files, const std::vector<std::string>& paths,
                                   const GoOn& goOn) {
    NotesRun run;
    NoteIndex index(m_files); // one reading for all
    if (!paths.empty()) index.SetFolder(FolderOf(paths.front()));
    std::size_t number = 0;
    for (const std::string& path : paths) {
        if (IsNote(path) && ToUpper(RightChars(path, 3)) == "TXT")
            ConvertOne(files, path, index, run);
        if (!goOn(++number)) break;
    }
    return run;
}

} // namespace tarn
