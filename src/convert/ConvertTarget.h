// Names of converted pictures and of their notes. Whether something stands there is asked in any
// case.
#pragma once

#include "platform/Files.h"

#include <string>

namespace tarn {

struct ConvertTarget {
    std::string path;     // empty: every name is taken
    std::string name;     // its last part; the last one tried when every name is taken
    std::string noteName; // of the note that belongs to it
};

// Beside the picture: "M31.jpg", or "M31-1.jpg" where that stands.
ConvertTarget TargetBeside(const Files& files, const std::string& picture);

// In a folder: "M31.jpg", or "M31-CM.jpg" where that stands; what stands there too is not kept.
ConvertTarget TargetIn(const Files& files, const std::string& folder, const std::string& picture);

// The first lines of a note as one, two blanks between them. At least one line is taken.
std::string CaptionOfNote(const std::string& note, int lines);

} // namespace tarn
