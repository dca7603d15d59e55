// Windows code page 1252, in which camera texts, notes and generated files are written. The five
// bytes that the page leaves open (81 8D 8F 90 9D) stand for the control characters of the same
// number, so that all 256 bytes go both ways.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarn {

// Any bytes, as UTF-8.
std::string FromCodePage(std::string_view bytes);

// UTF-8 as code page bytes; none when a character has no place there, which `misfit` then receives
// (as UTF-8) when it is given.
std::optional<std::string> ToCodePage(std::string_view text, std::string* misfit = nullptr);

} // namespace tarn
