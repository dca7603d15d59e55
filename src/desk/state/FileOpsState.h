// Copies, deletes, renames, conversion and outside programs.
#pragma once

#include "common/file_look.h"

#include <string>
#include <vector>

namespace tarn {

// A file whose date was set to its picture date.
struct DateChange {
    std::string path;
    FileLook before;
    FileLook after;
};

struct FileOpsState {
    std::string CopyImageFolder;
    bool DeleteNoteToo = false; // a delete of this file also removes its note
    bool DeleteConfirm = true;
    bool DeleteKeepNotes = false;
    bool CopyAuto = false;

    bool AutoSetFileDates = true;
    int HistoryDays = 90;                    // that commands can be taken back
    int HistoryMegabytes = 500;              // of contents kept for that
    bool FileDatesAnswered = false;          // the user has said whether it is to be so
    std::vector<DateChange> DatesSet;        // by viewing, as long as that has not been said
    std::vector<std::string> DatesTakenBack; // paths, left alone until then

    // The user has set the file's date by a command: it is no longer to be taken back.
    void DateWasAskedFor(const std::string& path) {
        std::erase_if(DatesSet, [&path](const DateChange& change) { return change.path == path; });
        std::erase(DatesTakenBack, path);
    }

    bool ConvertJpgAddFN = true;
    std::string ConvertJpgText; // typed
    std::string ConvertJpgLines = "1";
    std::string ConvertJpgMaxSize = "0";
    std::string ConvertJpgMaxWidth = "0"; // "1": the limit holds for the width
    int ConvertJpgMaxHeight = 0;          // 1: for the height
    int ConvertJpgType = 0;
    int ConvertJpgQuality = 75;

    std::string OpenIn; // outside programs; empty: none chosen
    std::string HtmlEditor;
    std::string ImagesPlus;
    std::string ImagesPlusExp;
    std::string RegiStax;
};

} // namespace tarn
