// What a picture file is, by its first bytes. No toolkit.
#pragma once

#include <string_view>

namespace tarn {

inline constexpr std::size_t kKindBytes = 4096; // of the file; what is further down says nothing

bool IsRaw(std::string_view start); // what a sensor recorded
bool IsHeif(std::string_view start);
bool IsJxl(std::string_view start);
bool IsTiff(std::string_view start); // raw files of this frame, too
bool IsPng(std::string_view start);
bool IsWebP(std::string_view start);

} // namespace tarn
