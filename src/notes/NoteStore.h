// Note files on the disk: found by name in any case, saved so that at every instant the old or the
// new note is whole, and never overwriting or deleting what nobody has seen.
#pragma once

#include "notes/NoteIndex.h"
#include "platform/Files.h"

#include <string>

namespace tarn {

// What an edit began with.
struct LoadedNote {
    std::string path;  // of the file read; empty: there was none
    std::string bytes; // the file, or its first 8000 bytes
};

// Writes a note file. A file on disk that is not what was loaded (longer, changed since, or never
// read) is kept in the wastebasket first, as "NAME (replaced).enf". False, with the system's text,
// when it could not be done: the file stands as it stood.
bool SaveNoteFile(Files& files, const std::string& path, const std::string& bytes,
                  const LoadedNote& loaded, std::string* error);

class NoteStore {
public:
    explicit NoteStore(const Files& files) : index(files), m_files(files) {}

    // Reads the note at this path, or the one that differs in case. False when there is none: then
    // nothing is loaded.
    bool Load(const std::string& path);

    // The note at this path, or the one that differs in case, without loading it: its first 8000
    // bytes.
    std::optional<std::string> Read(const std::string& path) const;

    // Writes, by a command's `files`, and takes the written bytes for the loaded ones.
    bool Save(Files& files, const std::string& path, const std::string& bytes, std::string* error);

    // Into the wastebasket.
    bool Delete(Files& files, const std::string& path, std::string* error);

    // Whether the note on disk is still what was loaded from there.
    bool IsAsLoaded(const std::string& path) const;

    // Nothing is loaded: what stands on the disk has not been seen.
    void Forget() { m_loaded = {}; }

    const LoadedNote& Loaded() const { return m_loaded; }

    NoteIndex index;

private:
    bool ReadFrom(const std::string& path);

    const Files& m_files;
    LoadedNote m_loaded;
};

} // namespace tarn
