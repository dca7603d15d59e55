// What belongs to a picture and goes where it goes: its note, in the notes folder, and its
// sidecars, beside it. Every command on files asks here. No widgets.
#pragma once

#include "common/sidecar_names.h"
#include "platform/Files.h"

#include <map>
#include <string>
#include <vector>

namespace tarn {

// Where notes are looked for, and the pictures that may share one.
struct NotesPlace {
    std::string folder;              // empty: none is set
    std::vector<std::string> listed; // names of the listed files
};

enum class BelongingKind { Note, Sidecar };

struct Belonging {
    BelongingKind kind = BelongingKind::Note;
    std::string path;       // as it stands
    std::string sharedWith; // another picture that has it, too; empty: none

    bool operator==(const Belonging&) const = default;
};

// "note" or "sidecar".
std::string WordOf(BelongingKind kind);

// A picture beside it, not `picture`, that has this sidecar, too, as the folder is now; empty:
// none.
std::string OtherWithSidecar(const Files& files, const std::string& sidecar,
                             const std::string& picture);

// Both stand there with the same bytes.
bool IsSameSidecar(const Files& files, const std::string& a, const std::string& b);

// For one command: folders are read once, when they are first asked for.
class Belongings {
public:
    Belongings(const Files& files, NotesPlace notes) : m_files(files), m_notes(std::move(notes)) {}

    std::vector<Belonging> Of(const std::string& picture);

    // Where one of them stands when the picture is at another place. Empty: it has no place there,
    // since another picture (`barredBy`) has a note of that name.
    std::string PlaceAt(const Belonging& belonging, const std::string& from, const std::string& to,
                        std::string& barredBy);

    // The sidecar that belongs to this file alone; empty when there is none.
    std::string OwnSidecarOf(const std::string& picture);

    const Files& Disk() const { return m_files; }

private:
    Belonging NoteOf(const std::string& name) const;
    std::string OtherWithNote(const std::string& noteName, const std::string& name,
                              const std::string& newName) const;
    const SidecarNames& SidecarsFor(const std::string& picture);
    std::string StandingPath(const std::string& folder, const std::string& name) const;

    const Files& m_files;
    NotesPlace m_notes;
    std::map<std::string, SidecarNames> m_sidecars; // by folder
    SidecarNames m_guessed;                         // of a folder that could not be read
};

} // namespace tarn
