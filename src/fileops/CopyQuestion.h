// The one question of a run that copies or moves: what is to become of files that stand there.
#pragma once

#include "desk/Context.h"
#include "fileops/CopyPlan.h"

#include <string>

namespace tarn {

// The plan follows the answer, and `skipped` counts what it leaves out. False when the run is not
// to begin. Asks nothing where nothing stands.
bool AskWhatStands(Context& context, CopyPlan& plan, const std::string& verb, int& skipped);

} // namespace tarn
