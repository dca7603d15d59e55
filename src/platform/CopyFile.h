// One file copied, as Files::Copy tells it.
#pragma once

#include <string>

namespace tarn {

// What a copy has of its original beside bytes and times: a copy what a new file gets, one that
// takes its original's place also attributes, access list and the whole mode.
enum class Likeness { NewFile, Same };

bool CopyFile(const std::string& from, const std::string& to, Likeness likeness, std::string* error,
              std::string* replaced);

} // namespace tarn
