// "tarn info": the camera data panel of each file, or with "--date" its dates by the fast pass.
#pragma once

#include "console/Subcommand.h"

namespace tarn {

extern const Usage kInfoUsage;

// One reader reads all files, in order, so that data which a file lacks may be those of the file
// before it, as in the window. The dates are the exception: they are emptied before each file, so
// that a row never shows the date of another picture. A file is read whether or not its size in
// pixels is known. The look's lines come below those of the reader.
int RunInfo(std::span<const std::string> words, const PictureLooker& lookAt);

} // namespace tarn
