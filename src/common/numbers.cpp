#include "common/numbers.h"

#include "common/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace tarn {

namespace {

std::string NonFiniteText(double value) {
    if (std::isnan(value)) return "NaN";
    return value < 0 ? "-Infinity" : "Infinity";
}

std::string ToChars(double value, std::chars_format format, int precision) {
    std::array<char, 400> buffer{}; // the largest double has 309 digits in front of the point
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, precision);
    return {buffer.data(), end.ptr};
}

// Next number away from zero in the last digit of a fixed text.
void AddOneToLastDigit(std::string& digits) {
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        if (*digit == '.') continue;
        if (*digit == '-') {
            digits.insert(1, 1, '1');
            return;
        }
        if (*digit != '9') {
            ++*digit;
            return;
        }
        *digit = '0';
    }
    digits.insert(0, 1, '1');
}

// Whether the value lies exactly half way between two numbers of so many decimals.
bool IsHalfWay(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const double scaled = std::abs(value) * scale;
    if (std::fma(std::abs(value), scale, -scaled) != 0) return false;
    return scaled - std::floor(scaled) == 0.5;
}

std::string StripTrailingZeros(std::string text) {
    if (!Contains(text, ".")) return text;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

template <typename Whole> std::optional<Whole> ParseWhole(std::string_view text) {
    const std::optional<double> value = ParseNumber(text);
    if (!value || std::abs(*value) > 1e15) return std::nullopt;
    const long long whole = RoundHalfEven(*value);
    if (whole < std::numeric_limits<Whole>::min() || whole > std::numeric_limits<Whole>::max()) {
        return std::nullopt;
    }
    return static_cast<Whole>(whole);
}

} // namespace

std::string FormatFixed(double value, int decimals) {
    if (!std::isfinite(value)) return NonFiniteText(value);
    if (!IsHalfWay(value, decimals)) return ToChars(value, std::chars_format::fixed, decimals);
    // The library rounds halves to even: cut the exact text, whose last digit is the 5, instead.
    std::string text = ToChars(value, std::chars_format::fixed, decimals + 1);
    text.pop_back();
    if (text.back() == '.') text.pop_back();
    AddOneToLastDigit(text);
    return text;
}

std::string FormatSigned(double value, int decimals) {
    std::string text = FormatFixed(value, decimals);
    if (value > 0) text.insert(0, 1, '+');
    return text;
}

std::string FormatNoLeadingZero(double value, int decimals) {
    std::string text = FormatFixed(value, decimals);
    const std::size_t first = StartsWith(text, "-") ? 1 : 0;
    if (text.compare(first, 2, "0.") == 0) text.erase(first, 1);
    return text;
}

std::string FormatPadded(long long value, int digits) {
    std::string text = std::to_string(value);
    const std::size_t first = value < 0 ? 1 : 0;
    const std::size_t wanted = first + static_cast<std::size_t>(std::max(digits, 0));
    if (text.size() < wanted) text.insert(first, wanted - text.size(), '0');
    return text;
}

std::string FormatGrouped(long long value) {
    std::string text = std::to_string(value);
    const std::size_t first = value < 0 ? 1 : 0;
    for (std::size_t pos = text.size(); pos > first + 3;) {
        pos -= 3;
        text.insert(pos, 1, ',');
    }
    return text;
}

std::string ShortestSingle(float value) {
    constexpr int kDigits = 7;
    if (!std::isfinite(value)) return NonFiniteText(value);
    if (value == 0) return "0";
    const std::string scientific =
        ToChars(value, std::chars_format::scientific, kDigits - 1); // "1.500000e-05"
    const std::size_t mark = scientific.find('e');
    const int exponent = std::atoi(scientific.c_str() + mark + 1);
    if (exponent < kDigits) {
        return StripTrailingZeros(FormatFixed(value, kDigits - 1 - exponent));
    }
    return StripTrailingZeros(scientific.substr(0, mark)) + "E+" + FormatPadded(exponent, 2);
}

long long RoundHalfEven(double value) {
    return std::llrint(value);
}

std::optional<double> ParseNumber(std::string_view text) {
    text = Trim(text);
    if (text.find_first_not_of("+-.eE0123456789") != std::string_view::npos) return std::nullopt;
    if (StartsWith(text, "+")) {
        text.remove_prefix(1);
        if (StartsWith(text, "-")) return std::nullopt;
    }
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<std::int16_t> ParseInt16(std::string_view text) {
    return ParseWhole<std::int16_t>(text);
}

std::optional<std::int32_t> ParseInt32(std::string_view text) {
    return ParseWhole<std::int32_t>(text);
}

std::optional<float> ParseSingle(std::string_view text) {
    const std::optional<double> value = ParseNumber(text);
    if (!value || std::abs(*value) > std::numeric_limits<float>::max()) return std::nullopt;
    return static_cast<float>(*value);
}

std::optional<bool> ParseBoolean(std::string_view text) {
    const std::string word = ToUpper(Trim(text));
    if (word == "TRUE") return true;
    if (word == "FALSE") return false;
    const std::optional<double> value = ParseNumber(word);
    if (!value) return std::nullopt;
    return *value != 0;
}

std::string VideoSizeText(long long bytes) {
    constexpr double kKilo = 1024;
    if (bytes < 1000000) return FormatFixed(double(bytes) / kKilo, 0) + " KB";
    return FormatFixed(double(bytes) / kKilo / kKilo, 2) + " MB";
}

} // namespace tarn
