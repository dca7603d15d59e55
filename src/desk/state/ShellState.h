// Start, end and what the window as a whole knows.
#pragma once

#include "common/version.h"

#include <string>

namespace tarn {

struct ShellState {
    std::string Version = kProgramVersion;
    std::string Version_Detail;
    std::string NFSfilename = "Note_Formats.txt";
    std::string StartFolder; // the first folder to be shown
    bool FormLoadDone = false;
    bool NoSaveOnExit = false;
    bool Closing = false;
    bool BatchRuns = false;      // a command works through the list: the window redraws nothing
    bool BatchCancelled = false; // and is to stop after the file in hand
};

} // namespace tarn
