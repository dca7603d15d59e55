#include "imaging/fits/FitsLines.h"

#include "common/numbers.h"
#include "imaging/fits/FitsDates.h"
#include "imaging/fits/SkyFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace tarn {

namespace {

constexpr int kOwnDigits = 9; // that a program writes because it means them

std::string WithoutZeros(std::string number) {
    if (number.find('.') == std::string::npos) return number;
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.') number.pop_back();
    return number;
}

std::string Shortest(auto value) {
    std::array<char, 64> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    return end.ec == std::errc() ? std::string(text.data(), end.ptr) : std::string();
}

// Of a number with more digits than anyone means: one of 32 bits that was written as one of 64, or
// one that a calculation has left beside the mark.
std::string WithoutNoise(double value) {
    constexpr double kSame = 1e-13;
    const auto single = float(value);
    if (std::abs(double(single) - value) <= std::abs(value) * kSame) return Shortest(single);
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::scientific, kOwnDigits);
    double rounded = value;
    std::from_chars(text.data(), end.ptr, rounded);
    return Shortest(rounded);
}

std::string Rounded(double value, std::ptrdiff_t digits) {
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::scientific, int(digits) - 1);
    return {text.data(), end.ptr};
}

// Whether it is a short number as one of 32 bits has it, written with more digits than that holds:
// -9.80000019.
bool HasNoiseOfSingle(const std::string& written, double value) {
    constexpr std::ptrdiff_t kLeast = 8; // digits
    constexpr std::ptrdiff_t kMost = 16;
    constexpr std::ptrdiff_t kShort = 6;
    const std::string mantissa = written.substr(0, written.find_first_of("eE"));
    const auto first = mantissa.find_first_of("123456789");
    if (mantissa.find('.') == std::string::npos || first == std::string::npos) return false;
    const auto digits = std::count_if(mantissa.begin() + std::ptrdiff_t(first), mantissa.end(),
                                      [](char c) { return c != '.'; });
    if (digits < kLeast || digits > kMost) return false;
    const auto single = float(value);
    return Rounded(single, digits) == Rounded(value, digits) &&
           ParseSingle(Rounded(single, kShort)) == single;
}

std::string With(const std::string& number, const char* unit) {
    return number.empty() ? std::string() : PlainNumber(number) + unit;
}

// Some write that of a sensor from absolute zero on.
std::string TemperatureText(const std::string& written) {
    constexpr double kBoiling = 100;
    return With(written, ParseNumber(written).value_or(0) > kBoiling ? " K" : " C");
}

std::string FormatText(const FitsHeader& header) {
    std::string text = std::to_string(std::abs(header.bits)) + " bit";
    if (header.bits < 0) text += " floating point";
    if (header.planes == 3) text += ", 3 planes";
    if (!header.mosaic) return text;
    text += ", Bayer ";
    for (const int colour : header.pattern) text += "RGB"[colour];
    return text;
}

std::string Both(const std::string& first, const char* between, const std::string& second) {
    return first.empty() || second.empty() ? std::string()
                                           : PlainNumber(first) + between + PlainNumber(second);
}

std::string DateText(std::string date) {
    std::replace(date.begin(), date.end(), 'T', ' ');
    return date;
}

} // namespace

std::string PlainNumber(const std::string& written) {
    constexpr double kLeast = 1e-9; // beyond these an exponent is easier to read
    constexpr double kMost = 1e15;
    const auto value = ParseNumber(written);
    if (!value) return written;
    if (*value == 0) return "0";
    if (std::abs(*value) < kLeast || std::abs(*value) >= kMost) return written;
    if (HasNoiseOfSingle(written, *value)) return Shortest(float(*value));
    const bool exponent = written.find_first_of("eE") != std::string::npos;
    const auto digits =
        std::count_if(written.begin(), written.end(), [](char c) { return c >= '0' && c <= '9'; });
    const bool whole = written.find('.') == std::string::npos;
    if (!exponent && (whole || digits <= kOwnDigits)) return WithoutZeros(written);
    return WithoutNoise(*value);
}

std::vector<std::string> FitsLines(const FitsHeader& header) {
    std::vector<std::string> lines;
    const auto add = [&](const char* label, const std::string& text) {
        if (!text.empty()) lines.push_back(label + text);
    };
    add("      Object: ", header.object);
    add("    Observed: ", ShownFitsDate(header));
    add("    Exposure: ", With(header.exposure, "s"));
    add("        Gain: ", PlainNumber(header.gain));
    add(" Temperature: ", TemperatureText(header.temperature));
    add("      Filter: ", header.filter);
    add("   Telescope: ", header.telescope);
    add("      Camera: ", header.camera);
    add("      Format: ", FormatText(header));
    add("  Local time: ", DateText(header.localDate));
    add("  Image type: ", header.imageType);
    add("      Offset: ", PlainNumber(header.offset));
    add("    Pedestal: ", PlainNumber(header.pedestal));
    add("     Binning: ",
        Both(header.binningX, " x ", header.binningY.empty() ? header.binningX : header.binningY));
    add("Focal length: ", With(header.focalLength, " mm"));
    add("     Focuser: ", PlainNumber(header.focus));
    add("    Air mass: ", PlainNumber(header.airMass));
    add("  RA and Dec: ", Both(header.rightAscension, ", ", header.declination));
    add("        Site: ", Both(header.latitude, ", ", header.longitude));
    if (header.images > 1)
        add("       Image: ",
            std::to_string(header.image + 1) + " of " + std::to_string(header.images));
    return lines;
}

SkyFacts SkyFactsOf(const std::string& path) {
    SkyFacts facts;
    if (!IsSkyFile(path)) return facts;
    const auto header = ReadSkyHeader(path, facts.fault);
    if (!header) return facts;
    return {FitsLines(*header), CameraDateOf(*header), header->image, header->images, {}};
}

} // namespace tarn
