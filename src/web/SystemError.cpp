#include "web/SystemError.h"

#include <cstring>

namespace tarn {

std::string SystemErrorLine(std::string_view description) {
    constexpr int kLastNumber = 200; // beyond the last of any system
    int number = 0;
    for (int i = 1; i < kLastNumber && number == 0; ++i)
        if (description == std::strerror(i)) number = i;
    return "Error " + std::to_string(number) + ", " + std::string(description);
}

std::string ErrorBoxText(std::string_view what, std::string_view path,
                         std::string_view description) {
    return std::string(what) + "\n" + std::string(path) + "\n\n" + SystemErrorLine(description);
}

} // namespace tarn
