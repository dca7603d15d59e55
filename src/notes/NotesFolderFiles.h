// What the notes manager does to the files of the notes folder. The format file is never taken for
// a note; what is overwritten or removed goes to the wastebasket.
#pragma once

#include "notes/NoteStore.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarn {

// What a run over many files did.
struct NotesRun {
    std::vector<std::string> changed;           // paths, as they are now
    std::map<std::string, std::string> renamed; // of those: from, to
    std::vector<std::string> failed;
    std::string error; // of the first that failed
};

class NotesFolderFiles {
public:
    // `formatFile` is the name that the user's format file has.
    NotesFolderFiles(const Files& files, std::string formatFile)
        : m_files(files), m_formatFile(std::move(formatFile)) {}

    // The note at this path, its first 8000 bytes; none when it cannot be read.
    std::optional<LoadedNote> Read(const std::string& path) const;

    // These change files by a command's `files`.
    static bool Update(Files& files, LoadedNote& note, const std::string& bytes,
                       std::string* error);
    static bool Delete(Files& files, const std::string& path, std::string* error);

    // Takes the quotes off every note that has them, in the whole file. `goOn` is asked after each
    // path, with its number from 1.
    using GoOn = std::function<bool(std::size_t)>;
    NotesRun FixAll(Files& files, const std::vector<std::string>& paths, const GoOn& goOn);

    // Renames "*.txt" to "*.enf", all in one folder; a note that already has the name goes to the
    // wastebasket.
    NotesRun Convert(Files& files, const std::vector<std::string>& paths, const GoOn& goOn);

private:
    bool IsNote(const std::string& path) const;
    static void FixOne(Files& files, const std::string& path, NotesRun& run);
    static void ConvertOne(Files& files, const std::string& path, const NoteIndex& index,
                           NotesRun& run);

    const Files& m_files;
    std::string m_formatFile;
};

} // namespace tarn
