// What a batch shows while the whole of it is planned, and whether it goes on.
#pragma once

#include "desk/batch/BatchRun.h"
#include "fileops/PicturePlan.h"

namespace tarn {

inline PlanGoesOn PlanningSteps(const BatchRun& batch, std::size_t count) {
    constexpr std::size_t kBetween = 50; // the screen would cost more than the disk
    return [&batch, count](std::size_t number) {
        return number % kBetween != 1 ||
               batch.Step("Planning " + std::to_string(number) + " of " + std::to_string(count));
    };
}

} // namespace tarn
