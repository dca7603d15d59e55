// Copies, deletes, renames, conversion and outside programs.
#pragma once

#include <string>

namespace tarn {

struct FileOpsState {
    std::string CopyImageFolder;
    std::string copyImageFilename;
    std::string CopyOk;
    std::string RenameFilename;
    std::string DuplicateFilename;
    bool DeleteNoteToo = false; // a delete of this file also removes its note
    bool DeleteConfirm = true;
    bool DeleteKeepNotes = false;
    bool CopyAuto = false;

    bool AutoSetFileDates = true;
    bool MoveAllCancel = false;
    bool DoFileSync = false;

    bool ConvertJpgAddFN = true;
    std::string ConvertJpgCaption;
    std::string ConvertJpgLines = "1";
    std::string ConvertJpgMaxSize = "0";
    std::string ConvertJpgMaxWidth = "0";
    int ConvertJpgMaxHeight = 0;
    int ConvertJpgType = 0;
    int ConvertJpgQuality = 75;

    std::string OpenIn; // outside programs; empty: none chosen
    std::string HtmlEditor;
    std::string ImagesPlus;
    std::string ImagesPlusExp;
    std::string RegiStax;
};

} // namespace tarn
