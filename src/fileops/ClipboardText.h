// Notes and camera data as text for other programs. Lines end with CR LF. No widgets.
#pragma once

#include "pictureinfo/PictureInfo.h"

#include <string>
#include <vector>

namespace tarn {

// The note, when there is to be one, then a line for each row, as it stands or without the blanks
// at its ends.
std::string NotesCameraText(const std::string& note, const std::vector<std::string>& rows,
                            bool withNotes, bool trimmed);

// All on one line: note, date, camera fields as far as they are known, and the name.
std::string NotesCameraLine(const std::string& note, const PictureInfo& info);

} // namespace tarn
