// Which names of the notes folder are taken: one reading of the folder, kept current by the
// program's own saves. So asking costs no look at the disk, however many notes there are.
#pragma once

#include "platform/Files.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tarn {

class NoteIndex {
public:
    explicit NoteIndex(const Files& files) : m_files(files) {}

    // The folder is read at the first question after this, and again after Refresh.
    void SetFolder(const std::string& folder);
    void Refresh() { m_read = false; }

    // Whether a picture of this name has a note, in any case of the note's name.
    bool HasNote(std::string_view fileName) const;

    // The name, as it stands in the folder, of the note that differs from this one at most in case.
    std::optional<std::string> Find(std::string_view noteName) const;

    void Put(const std::string& noteName, bool exists);

private:
    using Names = std::unordered_map<std::string, std::string>;
    Names& Known() const;

    const Files& m_files;
    std::string m_folder;
    mutable Names m_names; // folded name to name
    mutable bool m_read = false;
};

} // namespace tarn
