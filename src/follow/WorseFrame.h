// A frame that is worse than those before it in its series. No toolkit.
#pragma once

#include "sky/judging/JudgedFrame.h"

#include <optional>
#include <string>
#include <vector>

namespace tarn {

// The typical size of stars in the last twenty frames before this one in its series, where it lies
// beyond 3 robust deviations of theirs; none where it does not, or too few are known.
std::optional<double> UsualWhereWorse(const JudgedFrame& frame,
                                      const std::vector<const JudgedFrame*>& others);

// "'L11.fits' is worse than the frames before it: HFR 3.10, theirs 1.52".
std::string WorseSaid(const JudgedFrame& frame, double usual);

} // namespace tarn
