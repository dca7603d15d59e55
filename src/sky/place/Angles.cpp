#include "sky/place/Angles.h"

#include "common/numbers.h"
#include "common/text.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace tarn {

namespace {

constexpr double kRadian = std::numbers::pi / 180;

// Whether the "S" there ends "5h34m31.9s" and not "33d52m S".
bool AreSeconds(std::string_view text, std::size_t at) {
    if (text.find_first_of("HM") >= at) return false;
    const bool touches = text[at - 1] >= '0' && text[at - 1] <= '9';
    return touches || text.find('H') != std::string_view::npos;
}

// "N", "S", "E" or "W" in front or behind, taken away; 0 for none.
char TakeDirection(std::string& text) {
    constexpr std::string_view kDirections = "NSEW";
    if (text.empty()) return 0;
    for (const std::size_t at : {std::size_t(0), text.size() - 1}) {
        if (kDirections.find(text[at]) == std::string_view::npos) continue;
        const char direction = text[at];
        if (direction == 'S' && AreSeconds(text, at)) continue;
        text.erase(at, 1);
        text = std::string(Trim(text));
        return direction;
    }
    return 0;
}

// Digits and points between anything else that divides parts; none where other signs stand.
std::optional<std::vector<double>> PartsOf(std::string_view text) {
    // Degree signs are of two bytes.
    constexpr std::string_view kDividers = " :HMSD'\"\xC2\xB0*";
    std::vector<double> parts;
    std::string part;
    const auto end = [&] {
        if (part.empty()) return true;
        const auto number = ParseNumber(part);
        part.clear();
        if (number) parts.push_back(*number);
        return number.has_value();
    };
    for (const char sign : text) {
        if ((sign >= '0' && sign <= '9') || sign == '.')
            part += sign;
        else if (kDividers.find(sign) == std::string_view::npos || !end())
            return std::nullopt;
    }
    if (!end() || parts.empty() || parts.size() > 3) return std::nullopt;
    return parts;
}

// Whether its "D" is one of an exponent, and not that of degrees.
bool HasExponent(std::string_view text) {
    const std::size_t at = text.find_first_of("Dd");
    if (at == std::string_view::npos || at + 1 >= text.size()) return false;
    return text.find('.') < at || text[at + 1] == '+' || text[at + 1] == '-';
}

} // namespace

std::optional<double> ParseHeaderNumber(std::string_view written) {
    std::string text(written);
    const std::size_t exponent = text.find_first_of("Dd");
    if (exponent != std::string::npos) text[exponent] = 'E';
    return ParseNumber(text);
}

std::optional<WrittenAngle> ParseAngle(std::string_view written) {
    constexpr double kSixty = 60;
    WrittenAngle angle;
    const auto number = HasExponent(written) ? ParseHeaderNumber(written) : ParseNumber(written);
    if (number) {
        angle.value = *number;
        return angle;
    }
    std::string text = ToUpper(Trim(written));
    const char direction = TakeDirection(text);
    angle.hasDirection = direction != 0;
    bool negative = direction == 'S' || direction == 'W';
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        if (text[0] == '-') negative = !negative;
        text.erase(0, 1);
    }
    const auto parts = PartsOf(text);
    if (!parts) return std::nullopt;
    angle.isSexagesimal = parts->size() > 1;
    double unit = 1;
    for (std::size_t i = 0; i < parts->size(); ++i, unit /= kSixty) {
        if (i > 0 && (*parts)[i] >= kSixty) return std::nullopt;
        angle.value += (*parts)[i] * unit;
    }
    if (negative) angle.value = -angle.value;
    return angle;
}

double WithinTurn(double degrees) {
    const double rest = std::fmod(degrees, 360);
    return rest < 0 ? rest + 360 : rest;
}

double WithinHalfTurn(double degrees) {
    const double turn = WithinTurn(degrees);
    return turn >= 180 ? turn - 360 : turn;
}

double WithinWrittenTurn(double degrees, int decimals) {
    const double unit = std::pow(10, -decimals);
    return std::isfinite(degrees) && WithinTurn(degrees) >= 360 - unit / 2 ? 0 : degrees;
}

double Separation(double longitude, double latitude, double toLongitude, double toLatitude) {
    const double between = (toLongitude - longitude) * kRadian;
    const double here = latitude * kRadian;
    const double there = toLatitude * kRadian;
    const double half = std::pow(std::sin((there - here) / 2), 2) +
                        std::cos(here) * std::cos(there) * std::pow(std::sin(between / 2), 2);
    return 2 * std::asin(std::sqrt(std::clamp(half, 0.0, 1.0))) / kRadian;
}

} // namespace tarn
