#include "imaging/fits/FitsLines.h"

#include "imaging/fits/FitsFile.h"

#include <algorithm>
#include <cstdlib>

namespace tarn {

namespace {

// The time is world time unless the file names another.
std::string DateText(const FitsHeader& header) {
    std::string text = header.date;
    const auto between = text.find('T');
    if (between == std::string::npos) return text;
    text[between] = ' ';
    const bool universal = header.timeSystem.empty() || header.timeSystem == "UTC";
    return text + " " + (universal ? "UT" : header.timeSystem);
}

// "30" for "30.000", "1E-4" as it stands.
std::string WithoutZeros(std::string number) {
    if (number.find('.') == std::string::npos ||
        number.find_first_not_of("+-.0123456789") != std::string::npos)
        return number;
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.') number.pop_back();
    return number;
}

std::string With(const std::string& number, const char* unit) {
    return number.empty() ? std::string() : WithoutZeros(number) + unit;
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

} // namespace

std::vector<std::string> FitsLines(const FitsHeader& header) {
    std::vector<std::string> lines;
    const auto add = [&](const char* label, const std::string& text) {
        if (!text.empty()) lines.push_back(label + text);
    };
    add("      Object: ", header.object);
    add("    Observed: ", DateText(header));
    add("    Exposure: ", With(header.exposure, "s"));
    add("        Gain: ", WithoutZeros(header.gain));
    add(" Temperature: ", With(header.temperature, " C"));
    add("      Filter: ", header.filter);
    add("   Telescope: ", header.telescope);
    add("      Camera: ", header.camera);
    add("      Format: ", FormatText(header));
    return lines;
}

std::vector<std::string> FitsLinesOf(const std::string& path) {
    std::string error;
    if (!IsFitsFile(path)) return {};
    const auto header = ReadFitsHeader(path, error);
    return header ? FitsLines(*header) : std::vector<std::string>();
}

} // namespace tarn
