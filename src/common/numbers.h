// Numbers as text and back, in the forms that the program shows and stores, whatever the locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarn {

// Digits after the point as given ("0", "0.0"), rounded from the exact binary value, halves away
// from zero. A small negative keeps its sign ("-0.0"). "Infinity", "-Infinity", "NaN".
std::string FormatFixed(double value, int decimals);

// The same with "+" in front of what is above 0 ("+0.0").
std::string FormatSigned(double value, int decimals);

// The same without the zero in front of the point ("#.0": ".5", ".0", "-.5").
std::string FormatNoLeadingZero(double value, int decimals);

// A whole number with at least `digits` digits ("00"): -5 with 2 gives "-05".
std::string FormatPadded(long long value, int digits);

// Thousands in groups ("#,###,###,##0"): 1234567 gives "1,234,567".
std::string FormatGrouped(long long value);

// Size of a clip's file in bytes: "123 KB" below 1000000, from there on "1.43 MB".
std::string VideoSizeText(long long bytes);

// Shortest text of a 32-bit float: at most 7 significant digits, no trailing zeros, no exponent
// below 10 million ("50", "3.5", "0.3333333", "0.00001"); from there on "1E+07".
std::string ShortestSingle(float value);

// Rounded to a whole number, halves to even.
long long RoundHalfEven(double value);

// A finite decimal number with a point, a sign and an exponent where it has them; blanks around
// allowed; none for anything else.
std::optional<double> ParseNumber(std::string_view text);

// Text of a setting as a number: blanks around allowed, a fraction is rounded half to even for the
// whole types; none when it is no number or out of the type's range.
std::optional<std::int16_t> ParseInt16(std::string_view text);
std::optional<std::int32_t> ParseInt32(std::string_view text);
std::optional<float> ParseSingle(std::string_view text);

// "True" and "False" in any case; a number is true when it is not 0.
std::optional<bool> ParseBoolean(std::string_view text);

} // namespace tarn
