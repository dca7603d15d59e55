// What an import or export is to copy, worked out before anything is copied: files with their
// notes, where each goes, and what stands there already. No widgets.
#pragma once

#include "platform/Files.h"

#include <optional>
#include <string>
#include <vector>

namespace tarn {

// What to plan. Folders are existing ones; names are those of files in `filesFrom`.
struct CopyRequest {
    std::vector<std::string> files;
    std::string filesFrom;
    std::string filesTo;   // empty: the files only tell which notes are meant
    std::string notesFrom; // empty: no notes
    std::string notesTo;
    bool everyNote = false; // also notes that belong to none of the files
    bool sidecars = true;   // those of the files go along
};

struct PlannedCopy {
    std::string from;
    std::string to;
    enum class Kind { File, Note, Sidecar };
    Kind kind = Kind::File;
    bool stands = false; // something is there already
    std::size_t of = 0;  // a sidecar's file, by its place in the unit
    // The sidecar of the picture whose place it takes, and that no other comes to replace; mostly
    // empty.
    std::string givesWay = {};
};

// Files that share a note, and the note (without notes one file), with their sidecars: they keep
// belonging together when they get new names.
struct CopyUnit {
    std::vector<PlannedCopy> copies;

    bool Stands() const;
};

using CopyPlan = std::vector<CopyUnit>;

enum class WhenStands { Skip, Overwrite, KeepBoth };

// Units in the order of the files, then further notes by name. A note is looked for, in its source
// and at its target, by exact name and then in any case. None and the system's text when a folder
// cannot be read.
std::optional<CopyPlan> PlanCopies(const CopyRequest& request, const Files& files,
                                   std::string* error);

// One file under a given name.
CopyPlan PlanOneCopy(const std::string& from, const std::string& folder, const std::string& name,
                     const Files& files);

// Number of copies whose target stands.
int CountStanding(const CopyPlan& plan);

// Decides about all targets that stand: leaves those copies out, keeps them as they are, or gives
// their units new names, "M31 (2).jpg" with the note of that name.
void Resolve(CopyPlan& plan, WhenStands decision, const Files& files);

} // namespace tarn
