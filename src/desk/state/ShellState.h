// Start, end and what the window as a whole knows.
#pragma once

#include "common/version.h"

#include <string>

namespace tarn {

struct ShellState {
    std::string Version = kProgramVersion;
    std::string Version_Detail;
    std::string NFSfilename = "Note_Formats.txt";
    std::string StartSpec;   // path given by the command line or the last run
    std::string StartFolder; // folder worked out from it
    std::string StartName;   // file name to select, "NONE.JPG" for the first row
    bool FormLoadDone = false;
    bool NoSaveOnExit = false;
    bool Closing = false;
    bool BatchRuns = false;      // a command works through the list: the window redraws nothing
    bool BatchCancelled = false; // and is to stop after the file in hand
};

} // namespace tarn
