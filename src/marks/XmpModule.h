// What the module that reads and writes XMP has.
#pragma once

#include "common/mark.h"

#include <string>
#include <string_view>

namespace tarn {

struct XmpModule {
    static constexpr char kModule[] = "xmp";
    std::optional<Mark> (*markOf)(std::string_view bytes, std::string* error);
    std::optional<std::string> (*withMark)(std::string_view bytes, const MarkChange& change,
                                           std::string* error);
};

} // namespace tarn
