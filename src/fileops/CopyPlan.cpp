#include "fileops/CopyPlan.h"

#include "common/paths.h"
#include "common/sidecar_names.h"
#include "common/text.h"

#include <algorithm>
#include <map>
#include <set>

namespace tarn {

namespace {

constexpr std::string_view kNoteEnding = ".enf";
constexpr int kMostNumbers = 10000; // of a name; over what stands at the last nothing is copied

// The names in a folder, read once; a name may be looked for in any case.
class Names {
public:
    bool Read(const std::string& folder, const Files& files, std::string* error) {
        m_folder = folder;
        const auto names = files.FileNames(folder, error);
        if (!names) return false;
        m_names.insert(names->begin(), names->end());
        // A picture whose name is its ending has a note that is hidden.
        if (files.Exists(JoinPath(folder, kNoteEnding))) m_names.emplace(kNoteEnding);
        for (const std::string& name : m_names) m_anyCase.emplace(FoldCase(name), name);
        return true;
    }

    bool Has(const std::string& name) const { return m_names.count(name) > 0; }
    // As it is spelt in the folder; empty when it is not there.
    std::string Find(const std::string& name) const {
        if (Has(name)) return name;
        const auto at = m_anyCase.find(FoldCase(name));
        return at == m_anyCase.end() ? std::string() : at->second;
    }
    std::vector<std::string> Notes() const {
        std::vector<std::string> notes;
        for (const std::string& name : m_names)
            if (EndsWith(FoldCase(name), FoldCase(kNoteEnding))) notes.push_back(name);
        return notes;
    }
    SidecarNames Sidecars() const { return SidecarNames({m_names.begin(), m_names.end()}); }
    std::string Path(const std::string& name) const { return JoinPath(m_folder, name); }

private:
    std::string m_folder;
    std::set<std::string> m_names;
    std::map<std::string, std::string> m_anyCase; // by folded name
};

struct Folders {
    Names notesFrom;
    Names notesTo;
    Names filesTo;
    SidecarNames sidecars;
    SidecarNames sidecarsTo;

    bool Read(const CopyRequest& r, const Files& files, std::string* error) {
        if (r.sidecars && !r.filesTo.empty()) {
            const auto names = files.FileNames(r.filesFrom, error);
            if (!names) return false;
            sidecars = SidecarNames(*names);
        }
        const bool read = (r.notesFrom.empty() || (notesFrom.Read(r.notesFrom, files, error) &&
                                                   notesTo.Read(r.notesTo, files, error))) &&
                          (r.filesTo.empty() || filesTo.Read(r.filesTo, files, error));
        sidecarsTo = filesTo.Sidecars();
        return read;
    }

    PlannedCopy Note(const std::string& name) const {
        const std::string there = notesTo.Find(name);
        return {notesFrom.Path(name), notesTo.Path(there.empty() ? name : there),
                PlannedCopy::Kind::Note, !there.empty()};
    }
};

} // namespace

bool CopyUnit::Stands() const {
    return std::any_of(copies.begin(), copies.end(), [](const PlannedCopy& c) { return c.stands; });
}

// Names that differ in case alone would come to stand over one another.
static void MarkTwins(CopyPlan& plan) {
    std::set<std::string> targets;
    for (CopyUnit& unit : plan)
        for (PlannedCopy& copy : unit.copies)
            if (!targets.insert(FoldCase(copy.to)).second) copy.stands = true;
}

static void AddFile(CopyUnit& unit, const CopyRequest& request, const std::string& name,
                    const Folders& folders) {
    const std::size_t of = unit.copies.size();
    unit.copies.push_back({JoinPath(request.filesFrom, name), folders.filesTo.Path(name),
                           PlannedCopy::Kind::File, folders.filesTo.Has(name)});
    for (const std::string& sidecar :
         {folders.sidecars.OwnOf(name), folders.sidecars.SharedOf(name)})
        if (!sidecar.empty() && !IsSidecarName(name) && sidecar != name)
            unit.copies.push_back({JoinPath(request.filesFrom, sidecar),
                                   folders.filesTo.Path(sidecar), PlannedCopy::Kind::Sidecar,
                                   !folders.filesTo.Find(sidecar).empty(), of});
    const std::string own = folders.sidecarsTo.OwnOf(name);
    const bool isReplaced = std::any_of(
        unit.copies.begin() + std::ptrdiff_t(of), unit.copies.end(),
        [&](const PlannedCopy& copy) { return FoldCase(LastPart(copy.to)) == FoldCase(own); });
    if (unit.copies[of].stands && request.sidecars && !own.empty() && !isReplaced)
        unit.copies[of].givesWay = folders.filesTo.Path(own);
}

// Several files have one sidecar, or it is among the files itself.
static void DropTwice(CopyPlan& plan) {
    std::set<std::string> files;
    for (const CopyUnit& unit : plan)
        for (const PlannedCopy& copy : unit.copies)
            if (copy.kind == PlannedCopy::Kind::File) files.insert(copy.from);
    for (CopyUnit& unit : plan)
        std::erase_if(unit.copies, [&](const PlannedCopy& copy) {
            return copy.kind == PlannedCopy::Kind::Sidecar && !files.insert(copy.from).second;
        });
}

std::optional<CopyPlan> PlanCopies(const CopyRequest& request, const Files& files,
                                   std::string* error) {
    Folders folders;
    if (!folders.Read(request, files, error)) return {};
    CopyPlan plan;
    const bool withNotes = !request.notesFrom.empty();
    std::map<std::string, std::size_t> unitOf; // by the note that its files share
    for (const std::string& name : request.files) {
        const std::string shared = withNotes ? folders.notesFrom.Find(NoteNameOf(name)) : "";
        const std::string key = !shared.empty() ? shared : withNotes ? NoteNameOf(name) : name;
        const auto [at, isNew] = unitOf.emplace(key, plan.size());
        if (isNew) plan.emplace_back();
        if (!request.filesTo.empty()) AddFile(plan[at->second], request, name, folders);
        if (isNew && !shared.empty()) plan[at->second].copies.push_back(folders.Note(shared));
    }
    if (request.everyNote)
        for (const std::string& note : folders.notesFrom.Notes())
            if (unitOf.emplace(note, plan.size()).second) plan.push_back({{folders.Note(note)}});
    DropTwice(plan);
    MarkTwins(plan);
    std::erase_if(plan, [](const CopyUnit& unit) { return unit.copies.empty(); });
    return plan;
}

CopyPlan PlanOneCopy(const std::string& from, const std::string& folder, const std::string& name,
                     const Files& files) {
    const std::string to = JoinPath(folder, name);
    return {{{{from, to, PlannedCopy::Kind::File, files.Exists(to)}}}};
}

int CountStanding(const CopyPlan& plan) {
    int count = 0;
    for (const CopyUnit& unit : plan)
        for (const PlannedCopy& copy : unit.copies) count += copy.stands;
    return count;
}

namespace {

// "M31.jpg" with 2 is "M31 (2).jpg"; a name without an ending gets the number at its end.
std::string Numbered(const std::string& name, int number) {
    const auto dot = name.rfind('.');
    const auto at = dot == std::string::npos || dot == 0 ? name.size() : dot;
    return name.substr(0, at) + " (" + std::to_string(number) + ")" + name.substr(at);
}

// The unit under its n-th name; the note is that of its first file.
std::vector<std::string> TargetsOf(const CopyUnit& unit, int number) {
    using Kind = PlannedCopy::Kind;
    std::string note;
    for (const PlannedCopy& copy : unit.copies)
        if (copy.kind == Kind::File && note.empty())
            note = NoteNameOf(Numbered(LastPart(copy.to), number));
    const auto nameOf = [&](const PlannedCopy& copy) {
        if (copy.kind == Kind::Note && !note.empty()) return note;
        if (copy.kind != Kind::Sidecar) return Numbered(LastPart(copy.to), number);
        const PlannedCopy& file = unit.copies[copy.of];
        const bool isOwn =
            FoldCase(LastPart(copy.from)) == FoldCase(OwnSidecarName(LastPart(file.from)));
        const std::string name = Numbered(LastPart(file.to), number);
        return isOwn ? OwnSidecarName(name) : SharedSidecarName(name);
    };
    std::vector<std::string> targets;
    for (const PlannedCopy& copy : unit.copies)
        targets.push_back(JoinPath(FolderOf(copy.to), nameOf(copy)));
    return targets;
}

void GiveNewNames(CopyUnit& unit, std::set<std::string>& taken, const Files& files) {
    const auto isFree = [&](const std::string& path) {
        return taken.count(FoldCase(path)) == 0 && !files.Exists(path);
    };
    int number = 2;
    std::vector<std::string> targets = TargetsOf(unit, number);
    while (number < kMostNumbers && !std::all_of(targets.begin(), targets.end(), isFree))
        targets = TargetsOf(unit, ++number);
    for (std::size_t i = 0; i < targets.size(); ++i) {
        taken.insert(FoldCase(targets[i]));
        unit.copies[i].to = targets[i];
        unit.copies[i].stands = false;
        unit.copies[i].givesWay.clear();
    }
}

} // namespace

void Resolve(CopyPlan& plan, WhenStands decision, const Files& files) {
    using Kind = PlannedCopy::Kind;
    if (decision == WhenStands::Overwrite) return;
    std::set<std::string> taken;
    for (const CopyUnit& unit : plan)
        for (const PlannedCopy& copy : unit.copies) taken.insert(FoldCase(copy.to));
    for (CopyUnit& unit : plan) {
        if (!unit.Stands()) continue;
        if (decision == WhenStands::Skip) {
            // A note without its picture would come to belong to the other picture of this name.
            const bool pictureStays =
                std::any_of(unit.copies.begin(), unit.copies.end(), [](const PlannedCopy& copy) {
                    return copy.stands && copy.kind == Kind::File;
                });
            std::vector<bool> stands;
            for (const PlannedCopy& copy : unit.copies) stands.push_back(copy.stands);
            std::erase_if(unit.copies, [&](const PlannedCopy& copy) {
                return copy.stands || (copy.kind == Kind::Note && pictureStays) ||
                       (copy.kind == Kind::Sidecar && stands[copy.of]);
            });
        } else
            GiveNewNames(unit, taken, files);
    }
    std::erase_if(plan, [](const CopyUnit& unit) { return unit.copies.empty(); });
}

} // namespace tarn
