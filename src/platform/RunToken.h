// What a run puts into the names of the hidden files that it makes beside the user's, so that a
// later one knows those that a kill or a power cut has left.
#pragma once

#include <string>
#include <string_view>

namespace tarn {

// Of this machine, of its time since the start, of what numbers its processes, of this process:
// "5f3c01aa-09be77d2-11d0a3b4-4711".
const std::string& RunToken();

// Whether what begins with a token is of this machine and of a run that is over. False when it is
// not known: another machine may be at work in the same folder.
bool IsOfEndedRun(std::string_view token);

// Deletes the files of ended runs in a folder: new bytes that never came into their places.
void SweepBeside(const std::string& folder);

inline constexpr std::string_view kBeside = ".tarn-"; // a token and a number follow

} // namespace tarn
