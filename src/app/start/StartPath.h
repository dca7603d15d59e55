// Which folder and file the program opens with.
#pragma once

#include <string>

namespace tarn {

class Files;

struct StartPath {
    std::string spec;    // as given
    std::string folder;  // no separator at its end, except the root's
    std::string name;    // file to select; "NONE.JPG" for the first row
    std::string missing; // a file that was asked for and is not there, else empty
};

inline constexpr char kFirstRow[] = "NONE.JPG";

// `argument` is the command line's path, empty when there was none; `lastPath` the path of the last
// run, empty for a first run.
StartPath WorkOutStart(const std::string& argument, const std::string& lastPath,
                       const Files& files);

// The argument for the window that runs already and may stand in another folder: absolute, and in
// quotes, which are taken off there.
std::string HandedOver(const std::string& argument, const Files& files);

// Where a first run starts: the first picture of the picture folder, or of the home folder.
std::string FirstRunPath(const Files& files);

} // namespace tarn
