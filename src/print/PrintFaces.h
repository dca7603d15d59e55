// The fonts of the window's controls, as they are used on paper.
#pragma once

#include <string>

namespace tarn {

struct PrintFaces {
    std::string text = "Arial";       // TextNumOf
    std::string list = "Courier New"; // List1
    double listPoints = 9;
    std::string notes = "Arial"; // NotesBox
    double notesPoints = 9;
};

// "Tarn_View v61.14", the program's line on every page.
inline std::string ProgramLine(const std::string& version) {
    return "Tarn_View " + version;
}

} // namespace tarn
