// "tarn movers": what moves among the stars of a night.
#pragma once

#include "console/MarkCommands.h"
#include "console/MeasuredFrames.h"
#include "console/Subcommand.h"
#include "sky/movers/Movers.h"
#include "sky/movers/MoversQuest.h"

namespace tarn {

extern const Usage kMoversUsage;

using MoversFinder = std::function<MoversResult(const MoversQuest& quest)>;

struct MoversParts {
    FrameMeasurer measure;
    MarkReader marks;
    MoversFinder find;
};

// A row for each frame of each track, then one for each file that took no part. Frames marked as
// rejected, sums that stand in a folder and files named twice are left out, which is no fault.
int RunMovers(std::span<const std::string> words, const MoversParts& parts);

} // namespace tarn
