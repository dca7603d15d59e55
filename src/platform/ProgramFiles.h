// Finds the program's own files: beside the executable, in the build tree's data folder, then in
// ../share/tarn-view.
#pragma once

#include <string>

namespace tarn {

// Full path of a companion file ("No_image.jpg", "icons/next.svg"); where it would stand beside the
// executable when it is nowhere.
std::string ProgramFile(const std::string& name);

} // namespace tarn
