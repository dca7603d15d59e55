// Plans for one picture and what belongs to it: which files a command will read, write and remove,
// taken before any question, and carried out by their paths alone. No widgets.
#pragma once

#include "fileops/Belongings.h"
#include "history/Changes.h"
#include "platform/Files.h"

#include <functional>
#include <string>
#include <vector>

namespace tarn {

struct DeletePlan {
    std::string path;
    std::vector<Belonging> along; // goes too, but for what another picture has, too
};

// Without the note it stays; sidecars are part of the picture.
DeletePlan PlanDelete(Belongings& belongings, const std::string& path, bool withNote);

// The command's plan: one picture, or many, with what goes along.
void PlanThrow(const DeletePlan& plan, Changes& changes);
// Asked with the number of each file, from 1; false breaks it off.
using PlanGoesOn = std::function<bool(std::size_t number)>;
bool PlanThrows(const std::vector<std::string>& paths, const NotesPlace& notes, bool withNotes,
                Changes& changes, const PlanGoesOn& goesOn);

// Once the picture has gone. What the message line adds about note and sidecars.
std::string ThrowAlong(const DeletePlan& plan, Changes& changes);

// Whether a new name can be one: why not, or empty. `old` is the name that the picture has.
std::string FaultOfName(const std::string& name, const std::string& old);

// A file that goes along with a picture.
struct Along {
    BelongingKind kind = BelongingKind::Note;
    std::string from;
    std::string to;
    bool stays = false; // another picture has it, too: it is copied

    bool operator==(const Along&) const = default;
};

// A picture at another place, with what belongs to it.
struct NewNamePlan {
    std::string from;
    std::string to;
    std::vector<Along> along;
    std::string notWritten; // the note does not go along: this picture has one of that name
    std::string givesWay;   // the sidecar of the picture whose place it takes; mostly empty
};

NewNamePlan PlanPlace(Belongings& belongings, const std::string& from, const std::string& to);

// A file that stands at the target in any case, and is not the source itself, goes to the
// wastebasket; where only the case changes, one of exactly that name. A folder is refused.
bool MakeRoom(const Files& files, const std::string& source, const std::string& target,
              Changes& changes, std::string* error);

// What belongs to the picture stands at its new place, too; first, so that at no instant the
// picture is without it. True also where there is nothing.
bool BringAlong(const NewNamePlan& plan, const Files& files, Changes& changes, std::string* error);

// What could not go from its old place, and why: it stands in both.
struct LeftBehind {
    BelongingKind kind = BelongingKind::Note;
    std::string path; // empty: all has gone
    std::string why;
};

// Once the picture has gone: what was brought goes from its old place, unless another picture has
// it. The first that could not.
LeftBehind EndAlong(const NewNamePlan& plan, const Files& files, Changes& changes);

// Both are planned as a whole, and false, with the system's text, when they could not be done:
// everything then stands as it stood. `left` is what a rename could not take away.
bool CarryOutRename(const NewNamePlan& plan, Changes& changes, std::string* error,
                    LeftBehind* left);
bool CarryOutDuplicate(const NewNamePlan& plan, Changes& changes, std::string* error,
                       LeftBehind* left);

// Plain files of a folder that end in ".fit" or ".fits", in any case, as full paths.
std::vector<std::string> FitsFiles(const Files& files, const std::string& folder);

} // namespace tarn
