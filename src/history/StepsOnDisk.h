// A step carried out again, taken back, or looked for on the disk after its program was killed.
// Files are known again by what they are (volume, inode, else size and time to the nanosecond), not
// by their names alone.
#pragma once

#include "history/Step.h"
#include "platform/Files.h"

#include <string>
#include <vector>

namespace tarn {

// What is kept of a file's bytes, so that they can come back.
inline constexpr std::size_t kMostKept = 64U << 20U;

// A look by which the file is known again after a restart; one without an inode when nothing
// stands there.
FileLook IdentityOf(const Files& files, const std::string& path);

// The same file, or one with its size and time: what was written anew and dated back.
bool IsTheSame(const FileLook& was, const FileLook& is);

// Both are false, with the reason, when the file is not as it was left; the disk then stands as it
// stood. What they find out (where in the wastebasket it lies now) they write into the step.
bool TakeBackStep(Step& step, Files& files, std::string* error);
bool DoStep(Step& step, Files& files, std::string* error);
// A copy that is one half of a move onto another disk.
bool MoveAgain(Step& step, Files& files, std::string* error);

// Of steps in their order, each once, as far as the disk tells: the last first, since a later one
// may have moved what an earlier one left.
std::vector<Stands> TellSteps(const std::vector<Step>& steps, const Files& files);

} // namespace tarn
