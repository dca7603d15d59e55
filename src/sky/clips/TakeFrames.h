// Frames of a clip written as files of their own, or as a new clip.
#pragma once

#include "sky/frames/RatedClip.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

class Changes;
class Files;

// The files that an order makes, in its order; one of a new clip.
std::vector<std::string> TargetsOf(const TakeOrder& order, const Files& files);

// What stands at each of these files of one folder, in any case: the folder is read once for all.
std::vector<std::optional<std::string>> StandingAt(const std::vector<std::string>& targets,
                                                   const Files& files);

// How many of the frames are done, also at each frame that is passed over on the way to the next;
// false ends the command, and nothing of it stays.
using TakeProgress = std::function<bool(std::size_t done)>;

// A row for each target. What stands there, in any case, is not written over. A new clip that does
// not become whole is taken away again.
std::vector<TakenFrame> TakeFrames(const TakeOrder& order, Changes& changes,
                                   const TakeProgress& progress = {});

} // namespace tarn
