#include "navigation/NameFilter.h"

#include "common/text.h"

namespace tarn {

namespace {

constexpr char kNothing[] = "*.none";
constexpr char kFirstPreset[] = "*VMC*";

} // namespace

std::vector<std::string> FilterCaptions(std::string_view pattern) {
    if (pattern.empty()) return {};
    std::vector<std::string> captions = Split(pattern, ';');
    if (captions.size() > kFilterBoxes) captions.resize(kFilterBoxes);
    return captions;
}

std::string TickedPattern(const std::vector<std::string>& captions,
                          const std::array<bool, kFilterBoxes>& ticked) {
    std::string pattern;
    for (std::size_t i = 0; i < captions.size(); ++i)
        if (ticked[i]) pattern += (pattern.empty() ? "" : ";") + captions[i];
    return pattern.empty() ? kNothing : pattern;
}

std::string PatternOfText(std::string_view text) {
    std::string pattern;
    for (const std::string& part : Split(text, ';')) {
        const std::string word(Trim(part));
        if (word.empty()) continue;
        const bool whole = word.find_first_of("*?") != std::string::npos;
        pattern += (pattern.empty() ? "" : ";") + (whole ? word : "*" + word + "*");
    }
    return pattern;
}

std::vector<std::string> PresetsOf(std::string_view stored) {
    if (!Contains(stored, ";")) return {kFirstPreset};
    std::vector<std::string> presets = Split(stored, ';');
    presets.pop_back(); // behind the last ";" is none
    return presets;
}

std::string StoredPresets(const std::vector<std::string>& presets) {
    std::string stored;
    for (const std::string& preset : presets) stored += preset + ";";
    return stored;
}

} // namespace tarn
