// Processes by a name that no later one gets, so that a program that was killed is told from one
// that runs.
#pragma once

#include <string>

namespace tarn {

// "BOOT PID START".
std::string ThisProcess();

// Whether the process of this name runs, on this machine since its last start.
bool IsRunning(const std::string& process);

} // namespace tarn
