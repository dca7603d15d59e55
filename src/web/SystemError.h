// How boxes of the page commands tell a failure of the system.
#pragma once

#include <string>
#include <string_view>

namespace tarn {

// "Error 28, No space left on device" of the system's text; number 0 for a text that is none of
// its.
std::string SystemErrorLine(std::string_view description);

// A box's text: what failed, the path, an empty line and the error.
std::string ErrorBoxText(std::string_view what, std::string_view path,
                         std::string_view description);

} // namespace tarn
