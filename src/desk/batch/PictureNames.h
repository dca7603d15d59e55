// Which files of a folder are pictures, by the types that the list has.
#pragma once

#include "desk/state/ProgramState.h"

#include <string>

namespace tarn {

// Pictures, files of telescopes and raw files; no clips, texts or pages.
bool IsPictureName(const ProgramState& s, const std::string& name);

} // namespace tarn
