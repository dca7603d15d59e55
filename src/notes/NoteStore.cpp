#include "notes/NoteStore.h"

#include "common/paths.h"
#include "notes/NoteText.h"
#include "platform/WholeFile.h"

namespace tarn {

namespace {

std::string FreeNameBeside(const Files& files, const std::string& path) {
    const auto point = path.rfind('.');
    const std::string stem = path.substr(0, point);
    const std::string extension = point == std::string::npos ? "" : path.substr(point);
    std::string free = stem + " (replaced)" + extension;
    for (int i = 2; i < 1000 && files.Exists(free); ++i)
        free.assign(stem)
            .append(" (replaced ")
            .append(std::to_string(i))
            .append(")")
            .append(extension);
    return free;
}

// A copy goes, not the file itself: were the program to die now, the note would be missing. Where
// there is no wastebasket, the copy stays beside the note.
bool KeepOldNote(Files& files, const std::string& path, std::string* error) {
    std::string copy = FreeNameBeside(files, path);
    if (!files.Copy(path, copy, error)) {
        // No room beside it, or no leave: by way of the program's own folder.
        copy = FreeNameBeside(files, JoinPath(files.StateFolder(), LastPart(path)));
        if (!files.Copy(path, copy, error)) return false;
    }
    std::string noWastebasket;
    files.Trash(copy, &noWastebasket);
    return true;
}

} // namespace

bool SaveNoteFile(Files& files, const std::string& path, const std::string& bytes,
                  const LoadedNote& loaded, std::string* error) {
    if (files.Exists(path)) {
        const auto old = ReadWhole(files, path, kLargestNote, error);
        if (!old) return false;
        const bool seen = loaded.path == path && loaded.bytes == *old;
        const bool loses = !seen && !old->empty() && *old != bytes;
        if (loses && !KeepOldNote(files, path, error)) return false;
    }
    return files.Write(path, bytes, error);
}

bool NoteStore::ReadFrom(const std::string& path) {
    auto bytes = m_files.Read(path, kNoteReadLimit);
    if (!bytes) return false;
    m_loaded = {path, std::move(*bytes)};
    return true;
}

std::optional<std::string> NoteStore::Read(const std::string& path) const {
    if (auto exact = m_files.Read(path, kNoteReadLimit)) return exact;
    const auto name = index.Find(LastPart(path));
    if (!name) return {};
    return m_files.Read(JoinPath(FolderOf(path), *name), kNoteReadLimit);
}

bool NoteStore::Load(const std::string& path) {
    m_loaded = {};
    const std::string name = LastPart(path);
    if (ReadFrom(path)) {
        index.Put(name, true);
        return true;
    }
    const auto other = index.Find(name);
    if (!other) return false; // as the reading has shown, too
    if (*other != name && ReadFrom(JoinPath(FolderOf(path), *other))) return true;
    if (!m_files.Exists(path)) index.Put(name, false);
    return false;
}

bool NoteStore::Save(Files& files, const std::string& path, const std::string& bytes,
                     std::string* error) {
    const std::string target = m_files.FindAnyCase(path).value_or(path);
    if (!SaveNoteFile(files, target, bytes, m_loaded, error)) return false;
    m_loaded = {target, bytes};
    index.Put(LastPart(target), true);
    return true;
}

bool NoteStore::Delete(Files& files, const std::string& path, std::string* error) {
    const std::string target = m_files.FindAnyCase(path).value_or(path);
    if (!files.Trash(target, error)) return false;
    m_loaded = {};
    index.Put(LastPart(target), false);
    return true;
}

bool NoteStore::IsAsLoaded(const std::string& path) const {
    if (m_loaded.path.empty()) return !m_files.Exists(path);
    const auto now = m_files.Read(m_loaded.path, kNoteReadLimit);
    return now && *now == m_loaded.bytes;
}

} // namespace tarn
