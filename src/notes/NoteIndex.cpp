#include "notes/NoteIndex.h"

#include "common/paths.h"
#include "common/text.h"

namespace tarn {

void NoteIndex::SetFolder(const std::string& folder) {
    m_folder = folder;
    m_read = false;
}

NoteIndex::Names& NoteIndex::Known() const {
    if (m_read) return m_names;
    m_read = true;
    m_names.clear();
    if (m_folder.empty()) return m_names;
    const auto names = m_files.FileNames(m_folder);
    if (!names) return m_names;
    m_names.reserve(names->size());
    for (const std::string& name : *names) m_names.try_emplace(FoldCase(name), name);
    return m_names;
}

bool NoteIndex::HasNote(std::string_view fileName) const {
    return Known().contains(FoldCase(NoteNameOf(fileName)));
}

std::optional<std::string> NoteIndex::Find(std::string_view noteName) const {
    const auto found = Known().find(FoldCase(noteName));
    if (found == Known().end()) return {};
    return found->second;
}

void NoteIndex::Put(const std::string& noteName, bool exists) {
    if (exists)
        Known()[FoldCase(noteName)] = noteName;
    else
        Known().erase(FoldCase(noteName));
}

} // namespace tarn
