// The selection in the file list and how it is stepped through. Rows count from 0.
#pragma once

#include "common/patterns.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tarn {

// What the current file is shown as, which also says what pane is up. Nothing asks a widget.
enum class FileKind {
    Picture, // also where there is nothing to show
    Clip,
    Log, // a text among the clips
    Page,
    Text,
};

inline constexpr int kHistoryLimit = 2000; // highest index of the histories' arrays

struct SelectionState {
    std::string FileType;  // last four characters of Filename, upper case: ".JPG", "FITS"
    std::string FileTypes; // the pattern now set on the file list
    std::string PictureTypes = kPictureTypes;
    std::string VideoTypes = "*.avi;*.ser;*.log";
    std::string WebTypes = "*.html;*.css";
    std::string FitsTypes = "*.fits;*.fit";
    std::string XisfTypes = "*.xisf"; // listed with those, and so are FITS files that are packed
    std::string PackedFitsTypes = "*.fit*.gz;*.fz";
    std::string FitsClassTypes() const {
        std::string types = FitsTypes;
        for (const std::string* more : {&XisfTypes, &PackedFitsTypes})
            if (!more->empty()) types += ";" + *more;
        return types;
    }
    std::string RawTypes = "*.cr2";
    std::string TextTypes = "*.txt";
    std::string FilterCustom;
    std::string FilterPresets;
    bool FilterActive = false;   // frmFilter is open
    bool FilterIsCustom = false; // and its own pattern is on the list
    int PictureListCheck = 1;    // the class boxes, 0 or 1
    int VideoListCheck = 1;
    int WebListCheck = 0;

    int FileIndex = 0;            // row of the current file
    std::string FileModifiedText; // date and time of the current file, as read by the selection

    // Folders entered, entry 0 unused, with the row last shown in each.
    std::array<std::string, kHistoryLimit + 1> HistFolderPath;
    std::array<std::int32_t, kHistoryLimit + 1> HistFileIndex{};
    int HistCur = 0;
    int HistHigh = 0;
    // The row kept for the present entry; null while the cursor is past the last one.
    std::int32_t* HistRow() {
        return HistCur <= kHistoryLimit ? &HistFileIndex[static_cast<std::size_t>(HistCur)]
                                        : nullptr;
    }

    bool HistoryListed = false; // List1 shows the folder history, not the camera data

    bool HistNav = false; // the tree is moved along the folder history

    FileKind Kind = FileKind::Picture;
    bool VideoImage() const { return Kind == FileKind::Clip || Kind == FileKind::Log; }
    bool WebImage() const { return Kind == FileKind::Page; }
    bool ShowsText() const { return Kind == FileKind::Log || Kind == FileKind::Text; }
    bool VideoPending = false; // a video was chosen while the program starts
    std::string TextNumOf;     // "3 of 12", empty for an empty list
};

} // namespace tarn
