// The header of a sum: what its reference's says, times of all frames, their names and maps.
#pragma once

#include "imaging/fits/FitsWriter.h"
#include "sky/stack/Stack.h"

#include <string>
#include <vector>

namespace tarn {

// `paths` by the plan's numbers. Headers of the frames are read.
FitsCards CardsOfSum(const std::vector<std::string>& paths, const SeriesPlan& plan,
                     const StackResult& result);

std::size_t CountOfSum(const StackResult& result); // frames that are in it

} // namespace tarn
