// Plans for one picture and its note: which files a command will read, write and remove, taken
// before any question, and carried out by their paths alone. No widgets.
#pragma once

#include "fileops/UndoLog.h"
#include "platform/Files.h"

#include <string>
#include <vector>

namespace tarn {

// Where notes are looked for, and the pictures that may share one.
struct NotesPlace {
    std::string folder;              // empty: none is set
    std::vector<std::string> listed; // names of the listed files
};

struct PictureNote {
    std::string path;       // of the note file as it stands; empty when there is none
    std::string sharedWith; // another listed picture that has the same note; empty: none
};

PictureNote FindNote(const Files& files, const NotesPlace& notes, const std::string& fileName);

struct DeletePlan {
    std::string path;
    std::string note;    // goes too; empty when none does
    std::string keptFor; // the note stays for this picture
};

DeletePlan PlanDelete(const Files& files, const NotesPlace& notes, const std::string& path,
                      bool withNote);

// Whether a new name can be one: why not, or empty. `old` is the name that the picture has.
std::string FaultOfName(const std::string& name, const std::string& old);

// A picture under another name in its folder, with its note.
struct NewNamePlan {
    std::string from;
    std::string to;
    std::string noteFrom; // empty: there is no note, or an empty one
    std::string noteTo;
    bool noteStays = false; // another picture has it too, or it keeps its name
    std::string notWritten; // the note does not go along: this picture has one of that name
};

NewNamePlan PlanNewName(const Files& files, const NotesPlace& notes, const std::string& path,
                        const std::string& newName);

// A file that stands at the target in any case, and is not the source itself, goes to the
// wastebasket; where only the case changes, one of exactly that name. A folder is refused.
bool MakeRoom(const Files& files, const std::string& source, const std::string& target,
              Changes& changes, std::string* error);

// The note of a plan under its new name; true also where there is none. The old one stays.
bool BringNote(const NewNamePlan& plan, const Files& files, Changes& changes, std::string* error);

// Both are false, with the system's text, when they could not be done: everything then stands as it
// stood.
bool CarryOutRename(const NewNamePlan& plan, Files& files, Changes& changes, std::string* error);
bool CarryOutDuplicate(const NewNamePlan& plan, Files& files, Changes& changes, std::string* error);

// Plain files of a folder that end in ".fit" or ".fits", in any case, as full paths.
std::vector<std::string> FitsFiles(const Files& files, const std::string& folder);

} // namespace tarn
