// The history, for the console.
#pragma once

#include "console/DatesCommand.h"
#include "console/HistoryCommands.h"

namespace tarn {

std::vector<PastCommand> ReadPast(std::int64_t most);
TurnedCommand UndoPast(std::optional<std::int64_t> id);
TurnedCommand RedoPast(std::optional<std::int64_t> id);
std::vector<SetDate> SetFileDates(const std::vector<SetDate>& wanted);

} // namespace tarn
