// The commands of the sweep of faults, as a user gives them.
#pragma once

#include "FaultWorld.h"

#include <functional>
#include <utility>
#include <vector>

namespace tarn::testing {

using FaultAct = std::function<void(FaultWorld& w)>;

inline constexpr char kTyped[] = "typed just now"; // into the note

// In a world that is started, unless the command is the start.
const std::vector<std::pair<const char*, FaultAct>>& FaultCommands();

} // namespace tarn::testing
