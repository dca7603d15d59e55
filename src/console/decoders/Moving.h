// What moves in a night's files, for the console companion.
#pragma once

#include "console/MoversCommand.h"

namespace tarn {

MoversResult FindInFiles(const MoversQuest& quest);

} // namespace tarn
