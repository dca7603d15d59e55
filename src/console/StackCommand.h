// "tarn stack": the frames of a field laid over each other and averaged.
#pragma once

#include "console/MarkCommands.h"
#include "console/MeasuredFrames.h"
#include "console/Subcommand.h"
#include "sky/stack/Stack.h"

namespace tarn {

extern const Usage kStackUsage;

struct SumOrder {
    const std::vector<std::string>& paths; // of the plan's numbers
    const SeriesPlan& plan;
    double sigmas = 3;
    std::string target; // empty: the sum is not kept
};
using SumMaker = std::function<StackResult(const SumOrder& order)>;

struct Stackers {
    FrameMeasurer measure;
    MarkReader marks;
    SumMaker sum;
};

// A row for each file, folders by name. Frames that are marked as rejected, sums that stand in a
// folder and files named twice are left out, which is no fault; those of another field or size, or
// that cannot be read, are told and the rest goes on. What stands at the target goes to the
// wastebasket.
int RunStack(std::span<const std::string> words, const Stackers& stackers);

} // namespace tarn
