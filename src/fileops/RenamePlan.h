// Many files of one folder under other names, worked out before the first is touched: a name that
// becomes free in the run can be taken in it, and nothing is ever overwritten. No widgets.
//
// Files that exchange their names need a third one for an instant. It can be seen and told:
// "M31 (renaming).jpg" is the file that was "M31.jpg". A kill in that instant leaves it listed in
// its folder under this name; after a fault all files of the exchange have their old names again.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

inline constexpr std::size_t kNoRow = static_cast<std::size_t>(-1);

// One file of the folder and the name that it is to have.
struct RenameRow {
    std::string from;
    std::string to;
    bool copies = false; // the old name stays beside the new one

    bool operator==(const RenameRow&) const = default;
};

// Why a row was not done, for a list of them.
struct RenameFault {
    std::string from;
    std::string to;
    std::string why;
};

// One call on the disk.
struct RenameStep {
    std::size_t row = 0;
    std::string from; // names
    std::string to;
    bool follows = false; // takes the name that the step before gives up
    bool circle = false;  // one of an exchange, which is done whole or not at all
};

struct RenamePlan {
    std::string folder;
    std::vector<RenameRow> rows;
    std::vector<RenameStep> steps; // in the order in which every target is free
    std::vector<RenameFault> faults;
};

// A row for each name that begins with `from`, case included: `to` takes its place. None when
// `from` is empty.
std::vector<RenameRow> RenameRows(const std::vector<std::string>& names, std::string_view from,
                                  std::string_view to);

// `standing` are the names in the folder. A row becomes a fault when its target can be no name, is
// taken in any case by what does not move away, or is that of an earlier row; a row whose names are
// the same is nothing to do.
RenamePlan PlanRenames(const std::string& folder, std::vector<RenameRow> rows,
                       const std::vector<std::string>& standing);

// What is done to the notes of files that have moved. `before` are the names that the folder had,
// `notes` those in the notes folder. A note is found in any case; one that a file shares which
// stays is copied, as all are with `copies`. A note's own file has no note.
std::vector<RenameRow> NoteRows(const std::vector<RenameRow>& moved,
                                const std::vector<std::string>& before,
                                const std::vector<std::string>& notes, bool copies);

// The same of their sidecars, which stand among `before`. One that was renamed for itself has
// moved.
std::vector<RenameRow> SidecarRows(const std::vector<RenameRow>& moved,
                                   const std::vector<std::string>& before);

} // namespace tarn
