// "tarn marks" and "tarn mark": what was decided of pictures, read and set.
#pragma once

#include "common/mark.h"
#include "console/Subcommand.h"

namespace tarn {

extern const Usage kMarksUsage;
extern const Usage kMarkUsage;

struct FileMark {
    std::string path;
    Mark mark;
    std::string error; // why it could not be read or set
};

using MarkReader = std::function<std::vector<FileMark>(const std::vector<std::string>& paths)>;
using MarkSetter = std::function<std::vector<FileMark>(const std::vector<std::string>& paths,
                                                       const MarkChange& change)>;

// Folders are walked, a row for each picture.
int RunMarks(std::span<const std::string> words, const MarkReader& read);
int RunMark(std::span<const std::string> words, const MarkSetter& set);

} // namespace tarn
