// Files written into a hidden folder beside their places.
#pragma once

#include "platform/Files.h"

namespace tarn {

// Null, and the system's text, when nothing can be written in the folder.
std::unique_ptr<StagedFiles> MakeStaging(const std::string& folder, std::string* error);

// What killed runs have left of it in this folder: into the wastebasket, since it may hold what
// stood there before.
void SweepStaged(const std::string& folder);

// Where in a left one lies the file of this inode, which stood at this path until a new one took
// its place; empty when it does not.
std::string FindStaged(const std::string& stood, std::int64_t inode);

} // namespace tarn
