// Commands as the program gives them, for who breaks them off in all ways; and trees with all that
// must come back.
#pragma once

#include "history/Changes.h"

#include "support/Trees.h"

#include <string>
#include <vector>

namespace tarn::testing {

// Contents, time to the nanosecond and mode, by name; what is written now has any time.
Tree WholeTree(const std::string& folder);

struct Act {
    const char* name;
    Tree before;
    void (*run)(Changes& changes, const std::string& folder, const std::string& otherDisk);
    bool isPlanned = true; // else what was not begun is not known
};

const std::vector<Act>& Acts();

// The whole of it, ahead of its first change.
void Plan(const Act& act, Changes& changes, const std::string& folder,
          const std::string& otherDisk);

inline constexpr const char* kOtherDisk = "/dev/shm"; // in memory, on most machines

// All files of an act as if made long ago, with a mode of their own.
void FillLongAgo(const TestFolder& folder, const Tree& before);

} // namespace tarn::testing
