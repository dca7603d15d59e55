// A note for the user's report, written in the moment of a crash.
//
// What is written then has been prepared before: the handler takes no memory and calls nothing but
// what a signal handler may call. It writes once, whatever else goes wrong meanwhile, and leaves
// the end of the program to the system, core file included.
#pragma once

#include <string>
#include <string_view>

namespace tarn {

class Files;

// From now on a fatal signal leaves a note in this folder, `about` at its head. False, and nothing
// done, in builds with the sanitizers, which report crashes themselves.
bool KeepCrashNotes(const std::string& folder, const std::string& about);

// The file in hand, as the note will name it.
void SetCrashFile(std::string_view path);

// The note that an earlier run left in this folder, now under a name of its own by which it is
// kept; empty when there is none.
std::string TakeCrashNote(Files& files, const std::string& folder);

} // namespace tarn
