#include "web/HtmlColor.h"

#include <charconv>

namespace tarn {

namespace {

// The pairs of digits the other way round; what is missing is left out.
std::string PairsReversed(std::string_view digits) {
    std::string reversed;
    for (const std::size_t at : {4, 2, 0}) {
        if (at < digits.size()) reversed += digits.substr(at, 2);
    }
    return reversed;
}

} // namespace

std::string HtmlColorOf(int number) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string digits;
    for (auto rest = unsigned(number); rest != 0 || digits.empty(); rest /= 16)
        digits.insert(digits.begin(), kDigits[rest % 16]);
    const int zeros = number < 16 ? 5 : number < 256 ? 4 : number < 65536 ? 2 : 0;
    return PairsReversed(std::string(std::size_t(zeros), '0') + digits);
}

int NumberOfHtmlColor(std::string_view text) {
    const std::string digits = PairsReversed(text);
    int number = 0;
    const auto [end, fault] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return fault == std::errc() && end == digits.data() + digits.size() ? number : 0;
}

} // namespace tarn
