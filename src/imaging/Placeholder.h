// What stands in for a file that no reader can show.
#pragma once

#include <string_view>

namespace tarn {

struct Placeholder {
    std::string_view picture; // name among the program's own files
    bool offersDelete;        // the picture's own delete button, when the list has rows
    bool offersDeleteFits;    // the one for all files of its kind
    bool showsError;          // false for files that are known to have no preview
};

// By the last four characters of the file's name in upper case.
Placeholder PlaceholderFor(std::string_view fileType);

} // namespace tarn
