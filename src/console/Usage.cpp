#include "console/Usage.h"

namespace tarn {

namespace {

std::string TextOf(std::span<const std::string_view> choices) {
    std::string text;
    for (const std::string_view choice : choices) (text += text.empty() ? "" : "|").append(choice);
    return choices.size() > 1 ? "(" + text + ")" : text;
}

std::string TextOf(std::span<const OptionRule> options) {
    std::string text;
    bool goesOn = false; // in the same brackets
    for (const OptionRule& option : options) {
        (text += goesOn ? " | " : " [").append(option.name);
        if (!option.value.empty()) text.append(" ").append(option.value);
        goesOn = option.excludesNext;
        if (!goesOn) text += option.repeats ? "]..." : "]";
    }
    return text;
}

} // namespace

std::string TextOf(const Usage& usage) {
    std::string text;
    for (const UsageLine& line : usage.lines) {
        (text += text.empty() ? "tarn " : "\n       tarn ").append(usage.name);
        if (!line.choices.empty()) text += " " + TextOf(line.choices);
        (text += TextOf(line.options) + " ").append(line.operands);
    }
    return text;
}

} // namespace tarn
