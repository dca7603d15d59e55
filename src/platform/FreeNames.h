// Renames that never replace anything, whatever the file system can do; errno says why one failed.
#pragma once

#include <string>

namespace tarn {

bool RenameToFree(const std::string& from, const std::string& to);

// The same where the system has no such rename: the name is taken first, by an empty file or
// folder, which the rename replaces.
bool RenameByTaking(const std::string& from, const std::string& to);

// What was renamed in it is on the disk only when the folder is.
void FlushFolder(const std::string& folder);

} // namespace tarn
