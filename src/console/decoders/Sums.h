// The sum of a series, read from its files and written as one, for the console companion.
#pragma once

#include "console/StackCommand.h"

namespace tarn {

StackResult MakeSum(const SumOrder& order);

} // namespace tarn
