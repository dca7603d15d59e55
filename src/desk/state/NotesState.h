// Notes: where they lie and what is in hand. Texts have CR LF line ends.
#pragma once

#include <string>

namespace tarn {

struct NotesState {
    std::string NotesFolder;   // no separator at its end; empty: none is set
    std::string NotesFilename; // the current file's note
    std::string NoteText;      // what stands in the note box
    std::string NotesSave;     // the restore buffer
    int ClearNotesSavePlus = 0;

    // List index of each choice of the composer.
    int NewNotesTelescope = 0;
    int NewNotesGuideScope = 0;
    int NewNotesLens = 0;
    int NewNotesMount = 0;
    int NewNotesCamera = 0;
    int NewNotesFilter = 0;
    int NewNotesExposure = 0;
    int NewNotesProcessing = 0;
    int NewNotesLocation = 0;
    int NewNotesDate = 0;
};

} // namespace tarn
