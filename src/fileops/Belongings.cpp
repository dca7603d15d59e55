#include "fileops/Belongings.h"

#include "common/paths.h"
#include "common/text.h"
#include "platform/WholeFile.h"

namespace tarn {

namespace {

constexpr std::size_t kLargestCompared = 16U << 20U;

} // namespace

std::string WordOf(BelongingKind kind) {
    return kind == BelongingKind::Note ? "note" : "sidecar";
}

// A listed picture, none of the two, to which a note of this name belongs.
std::string Belongings::OtherWithNote(const std::string& noteName, const std::string& name,
                                      const std::string& newName) const {
    const std::string folded = FoldCase(noteName);
    for (const std::string& listed : m_notes.listed)
        if (listed != name && FoldCase(listed) != FoldCase(newName) &&
            FoldCase(NoteNameOf(listed)) == folded)
            return listed;
    return {};
}

Belonging Belongings::NoteOf(const std::string& name) const {
    Belonging note{BelongingKind::Note, {}, {}};
    if (m_notes.folder.empty()) return note;
    const std::string noteName = NoteNameOf(name);
    const auto path = m_files.FindAnyCase(JoinPath(m_notes.folder, noteName));
    if (!path || m_files.IsFolder(*path)) return note;
    note.path = *path;
    note.sharedWith = OtherWithNote(noteName, name, {});
    return note;
}

// Of a folder that cannot be read those are asked for that are spelt as their picture is.
const SidecarNames& Belongings::SidecarsFor(const std::string& picture) {
    const std::string folder = FolderOf(picture);
    const auto known = m_sidecars.find(folder);
    if (known != m_sidecars.end()) return known->second;
    if (const auto names = m_files.FileNames(folder))
        return m_sidecars.emplace(folder, SidecarNames(*names)).first->second;
    const std::string name = LastPart(picture);
    m_guessed = SidecarNames({OwnSidecarName(name), SharedSidecarName(name)});
    return m_guessed;
}

// It may have gone since its folder was read.
std::string Belongings::StandingPath(const std::string& folder, const std::string& name) const {
    if (name.empty()) return {};
    std::string path = JoinPath(folder, name);
    return m_files.Exists(path) ? path : std::string();
}

std::string Belongings::OwnSidecarOf(const std::string& picture) {
    return StandingPath(FolderOf(picture), SidecarsFor(picture).OwnOf(LastPart(picture)));
}

std::string OtherWithSidecar(const Files& files, const std::string& sidecar,
                             const std::string& picture) {
    const std::string folded = FoldCase(LastPart(sidecar));
    const std::string name = LastPart(picture);
    const auto names = files.FileNames(FolderOf(sidecar));
    if (!names) return "other pictures"; // it may be so
    for (const std::string& other : *names)
        if (other != name && !IsSidecarName(other) && !FoldCase(other).ends_with(".ENF") &&
            FoldCase(SharedSidecarName(other)) == folded)
            return other;
    return {};
}

bool IsSameSidecar(const Files& files, const std::string& a, const std::string& b) {
    if (!files.Exists(a) || !files.Exists(b)) return false;
    const auto bytes = ReadWhole(files, a, kLargestCompared);
    return bytes && bytes == ReadWhole(files, b, kLargestCompared);
}

std::vector<Belonging> Belongings::Of(const std::string& picture) {
    std::vector<Belonging> all;
    const std::string folder = FolderOf(picture);
    const std::string name = LastPart(picture);
    if (Belonging note = NoteOf(name); !note.path.empty()) all.push_back(std::move(note));
    if (IsSidecarName(name)) return all;
    if (const std::string own = OwnSidecarOf(picture); !own.empty())
        all.push_back({BelongingKind::Sidecar, own, {}});
    const std::string shared = StandingPath(folder, SidecarsFor(picture).SharedOf(name));
    if (!shared.empty() && (all.empty() || all.back().path != shared))
        all.push_back({BelongingKind::Sidecar, shared, OtherWithSidecar(m_files, shared, picture)});
    return all;
}

std::string Belongings::PlaceAt(const Belonging& belonging, const std::string& from,
                                const std::string& to, std::string& barredBy) {
    const std::string name = LastPart(from);
    const std::string newName = LastPart(to);
    if (belonging.kind == BelongingKind::Note) {
        const std::string noteName = NoteNameOf(newName);
        std::string place = JoinPath(m_notes.folder, noteName);
        const bool keepsName = FoldCase(NoteNameOf(name)) == FoldCase(noteName);
        if (!keepsName && m_files.FindAnyCase(place))
            barredBy = OtherWithNote(noteName, name, newName);
        if (newName == name) return belonging.path;
        return barredBy.empty() ? place : std::string();
    }
    const std::string folder = FolderOf(to);
    const std::string own = JoinPath(folder, OwnSidecarName(newName));
    if (FoldCase(LastPart(belonging.path)) == FoldCase(OwnSidecarName(name))) return own;
    // Under the shared name it would be another picture's, too.
    std::string shared = JoinPath(folder, SharedSidecarName(newName));
    const bool here = FolderOf(from) == folder;
    const bool isSame = here && FoldCase(SharedSidecarName(name)) == FoldCase(LastPart(shared));
    if (isSame || OtherWithSidecar(m_files, shared, here ? from : to).empty() ||
        IsSameSidecar(m_files, belonging.path, shared)) // brought with the other one
        return shared;
    return OwnSidecarOf(from).empty() ? own : std::string();
}

} // namespace tarn
