// Copies, deletes, renames, conversion and outside programs.
#pragma once

#include <string>

namespace tarn {

struct FileOpsState {
    std::string CopyImageFolder;
    bool DeleteNoteToo = false; // a delete of this file also removes its note
    bool DeleteConfirm = true;
    bool DeleteKeepNotes = false;
    bool CopyAuto = false;

    bool AutoSetFileDates = true;

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
