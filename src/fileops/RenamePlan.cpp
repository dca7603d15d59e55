#include "fileops/RenamePlan.h"

#include "common/paths.h"
#include "common/sidecar_names.h"
#include "common/text.h"
#include "fileops/PicturePlan.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace tarn {

namespace {

constexpr std::size_t kLongestName = 255; // bytes
constexpr int kEnding = 4;                // characters of a name that its note's ending replaces

// Works out who waits for whom. Names are compared in folded form.
class Planner {
public:
    explicit Planner(RenamePlan& plan)
        : m_plan(plan), m_why(plan.rows.size()), m_links(plan.rows.size()) {}

    void Plan(const std::vector<std::string>& standing) {
        FoldNames(standing);
        for (std::size_t row = 0; row < Rows().size(); ++row) FindMover(row);
        for (std::size_t row = 0; row < Rows().size(); ++row) CheckTarget(row);
        m_plan.steps.reserve(Rows().size());
        for (std::size_t row = 0; row < Rows().size(); ++row)
            if (IsToDo(row)) AddStepsOf(row);
        for (std::size_t row = 0; row < Rows().size(); ++row)
            if (!m_why[row].empty())
                m_plan.faults.push_back({Rows()[row].from, Rows()[row].to, m_why[row]});
    }

private:
    struct Name {
        int count = 0;               // how many stand there, in different case
        std::size_t leaves = kNoRow; // the row that takes the one away
        std::size_t wanted = kNoRow; // the row that is to have the name
    };
    struct Links {
        Name* from = nullptr;
        Name* to = nullptr;
        bool planned = false;
    };

    const std::vector<RenameRow>& Rows() const { return m_plan.rows; }

    void FoldNames(const std::vector<std::string>& standing) {
        m_names.reserve(standing.size() + 2 * Rows().size());
        for (const std::string& name : standing) ++m_names[FoldCase(name)].count;
    }

    bool IsToDo(std::size_t row) const {
        return m_links[row].to && m_why[row].empty() && !m_links[row].planned;
    }

    void FindMover(std::size_t number) {
        const RenameRow& row = Rows()[number];
        if (row.from == row.to) return;
        Links& links = m_links[number];
        links.from = &m_names[FoldCase(row.from)];
        links.to = &m_names[FoldCase(row.to)];
        m_why[number] = FaultOfName(row.to, row.from);
        const bool leaves = m_why[number].empty() && !row.copies && links.from->count == 1;
        if (leaves) links.from->leaves = number;
    }

    void CheckTarget(std::size_t number) {
        Links& links = m_links[number];
        if (!links.to || !m_why[number].empty()) return;
        if (links.to->wanted != kNoRow) {
            Block(number, "two files would have this name");
            return;
        }
        links.to->wanted = number;
        const bool becomesFree = links.to->count == 1 && links.to->leaves != kNoRow;
        if (links.to->count > 0 && !becomesFree) Block(number, "a file of this name exists");
    }

    // A file that stays bars the one that was to have its name, and so on.
    void Block(std::size_t number, const char* why) {
        m_why[number] = why;
        for (Name* kept = m_links[number].from; kept->leaves == number;) {
            kept->leaves = kNoRow;
            number = kept->wanted;
            if (number == kNoRow || !m_why[number].empty()) return;
            m_why[number] = "the file of this name keeps it";
            kept = m_links[number].from;
        }
    }

    // The row that must be done before this one; kNoRow when none must.
    std::size_t Ahead(std::size_t number) const {
        const std::size_t leaves = m_links[number].to->leaves;
        return leaves == number ? kNoRow : leaves; // another case of its own name
    }

    void AddStepsOf(std::size_t row) {
        std::size_t first = row;
        for (std::size_t ahead = Ahead(row); ahead != kNoRow; ahead = Ahead(ahead)) {
            if (ahead == row) {
                AddCircle(row);
                return;
            }
            first = ahead;
        }
        AddChain(first);
    }

    std::size_t Behind(std::size_t number) const {
        const Name& from = *m_links[number].from;
        const std::size_t wanted = from.leaves == number ? from.wanted : kNoRow;
        return wanted == number ? kNoRow : wanted;
    }

    void AddChain(std::size_t first) {
        for (std::size_t row = first; row != kNoRow; row = Behind(row)) {
            m_links[row].planned = true;
            m_plan.steps.push_back({row, Rows()[row].from, Rows()[row].to, row != first, false});
        }
    }

    void AddCircle(std::size_t first) {
        const RenameRow& aside = Rows()[first];
        const std::string between = FreeName(aside.from);
        m_plan.steps.push_back({first, aside.from, between, false, true});
        for (std::size_t row = Behind(first); row != first; row = Behind(row)) {
            m_links[row].planned = true;
            m_plan.steps.push_back({row, Rows()[row].from, Rows()[row].to, true, true});
        }
        m_links[first].planned = true;
        m_plan.steps.push_back({first, between, aside.to, true, true});
    }

    std::string FreeName(const std::string& name) {
        const auto point = name.rfind('.');
        const auto at = point == std::string::npos || point == 0 ? name.size() : point;
        for (int number = 1;; ++number) {
            const std::string mark =
                number == 1 ? " (renaming)" : " (renaming " + std::to_string(number) + ")";
            const std::string end = mark + name.substr(at);
            std::string made =
                name.substr(0, std::min(at, kLongestName - std::min(kLongestName, end.size()))) +
                end;
            Name& entry = m_names[FoldCase(made)];
            if (entry.count > 0 || entry.wanted != kNoRow) continue;
            entry.count = 1;
            return made;
        }
    }

    RenamePlan& m_plan;
    std::unordered_map<std::string, Name> m_names; // whose entries stay where they are
    std::vector<std::string> m_why;                // by row; empty: it can be done
    std::vector<Links> m_links;                    // by row
};

bool IsNote(std::string_view name) {
    return EndsWith(FoldCase(name), ".ENF");
}

// At least one character is kept.
std::string NewNoteName(std::string_view name) {
    return std::string(LeftChars(name, std::max(1, Length(name) - kEnding))) + ".enf";
}

class FilesByName {
public:
    explicit FilesByName(const std::vector<std::string>& notes) {
        m_notes.reserve(notes.size());
        for (const std::string& note : notes) m_notes.emplace(FoldCase(note), &note);
    }
    // The one of exactly this name, else one in another case; null when there is none.
    const std::string* Find(const std::string& name, const std::string& folded) const {
        const auto [first, last] = m_notes.equal_range(folded);
        const std::string* found = nullptr;
        for (auto at = first; at != last; ++at)
            if (!found || *at->second == name) found = at->second;
        return found;
    }

private:
    std::unordered_multimap<std::string, const std::string*> m_notes;
};

// No picture, and nothing belongs to it.
bool IsNoteOrSidecar(std::string_view name) {
    return IsNote(name) || IsSidecarName(name);
}

// How the names of what belongs to a file are made of the file's own.
struct Naming {
    std::string (*of)(std::string_view name);
    std::string (*made)(std::string_view name);
};

constexpr Naming kNote{NoteNameOf, NewNoteName};
constexpr Naming kOwnSidecar{OwnSidecarName, OwnSidecarName};
constexpr Naming kSharedSidecar{SharedSidecarName, SharedSidecarName};

// What files which stay have, as folded names.
std::unordered_set<std::string> OfOthers(const std::vector<RenameRow>& moved,
                                         const std::vector<std::string>& before,
                                         const Naming& naming) {
    std::unordered_set<std::string_view> gone;
    gone.reserve(moved.size());
    for (const RenameRow& row : moved) gone.insert(row.from);
    std::unordered_set<std::string> names;
    for (const std::string& name : before)
        if (!gone.contains(name) && !IsNoteOrSidecar(name)) names.insert(FoldCase(naming.of(name)));
    return names;
}

// `standing` are the names among which they are looked for.
std::vector<RenameRow> RowsAlong(const std::vector<RenameRow>& moved,
                                 const std::vector<std::string>& before,
                                 const std::vector<std::string>& standing, bool copies,
                                 const Naming& naming) {
    const FilesByName byName(standing);
    const auto others = OfOthers(moved, before, naming);
    std::vector<RenameRow> rows;
    std::unordered_map<std::string, std::size_t> rowOf; // by the old one's folded name
    rowOf.reserve(moved.size());
    for (const RenameRow& picture : moved) {
        if (IsNoteOrSidecar(picture.from)) continue;
        const std::string name = naming.of(picture.from);
        std::string old = FoldCase(name);
        const std::string* found = byName.Find(name, old);
        if (!found) continue;
        RenameRow row{*found, naming.made(picture.to), copies || others.contains(old)};
        const auto [earlier, isFirst] = rowOf.emplace(std::move(old), rows.size());
        if (!isFirst) {
            if (rows[earlier->second].to == row.to) continue; // both have moved alike
            rows[earlier->second].copies = row.copies = true;
        }
        rows.push_back(std::move(row));
    }
    std::erase_if(rows, [](const RenameRow& row) {
        return row.copies && FoldCase(row.from) == FoldCase(row.to); // it serves both names
    });
    return rows;
}

} // namespace

std::vector<RenameRow> RenameRows(const std::vector<std::string>& names, std::string_view from,
                                  std::string_view to) {
    std::vector<RenameRow> rows;
    if (from.empty()) return rows;
    for (const std::string& name : names)
        if (StartsWith(name, from))
            rows.push_back({name, std::string(to) + name.substr(from.size())});
    return rows;
}

RenamePlan PlanRenames(const std::string& folder, std::vector<RenameRow> rows,
                       const std::vector<std::string>& standing) {
    RenamePlan plan{folder, std::move(rows), {}, {}};
    Planner(plan).Plan(standing);
    return plan;
}

std::vector<RenameRow> NoteRows(const std::vector<RenameRow>& moved,
                                const std::vector<std::string>& before,
                                const std::vector<std::string>& notes, bool copies) {
    return RowsAlong(moved, before, notes, copies, kNote);
}

std::vector<RenameRow> SidecarRows(const std::vector<RenameRow>& moved,
                                   const std::vector<std::string>& before) {
    std::unordered_set<std::string_view> gone;
    for (const RenameRow& row : moved) gone.insert(row.from);
    std::vector<std::string> standing;
    for (const std::string& name : before)
        if (IsSidecarName(name) && !gone.contains(name)) standing.push_back(name);
    std::vector<RenameRow> rows = RowsAlong(moved, before, standing, false, kOwnSidecar);
    for (RenameRow& row : RowsAlong(moved, before, standing, false, kSharedSidecar))
        if (std::none_of(rows.begin(), rows.end(),
                         [&](const RenameRow& own) { return own.from == row.from; }))
            rows.push_back(std::move(row));
    return rows;
}

} // namespace tarn
