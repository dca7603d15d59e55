// What the filter window makes of the list's pattern: boxes, a pattern of the ticked ones, and the
// presets as they are stored. No widgets.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

inline constexpr std::size_t kFilterBoxes = 16;

// The single patterns of a list, one a box; what is past the last box has none.
std::vector<std::string> FilterCaptions(std::string_view pattern);

// The ticked captions joined by ";"; a pattern that fits nothing when none is ticked.
std::string TickedPattern(const std::vector<std::string>& captions,
                          const std::array<bool, kFilterBoxes>& ticked);

// The user's own text as patterns: a word without "*" and "?" may stand anywhere in the name.
std::string PatternOfText(std::string_view text);

// Presets are stored each followed by ";". What holds none gives the one of a new user.
std::vector<std::string> PresetsOf(std::string_view stored);
std::string StoredPresets(const std::vector<std::string>& presets);

} // namespace tarn
