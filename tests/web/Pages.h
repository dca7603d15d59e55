// What the tests of pages look at them with.
#pragma once

#include "web/PageText.h"

#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>

namespace tarn::testing {

inline std::string Lines(std::initializer_list<std::string_view> lines) {
    PageText text;
    for (const auto line : lines) text.Line(line);
    return text.Bytes();
}

inline bool Has(const std::string& page, std::initializer_list<std::string_view> lines) {
    return page.find(Lines(lines)) != std::string::npos;
}

// The whole of a file that stands beside this one.
inline std::string Golden(const std::string& name) {
    std::ifstream whole(TARN_WEB_TESTS "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(whole), {}};
}

} // namespace tarn::testing
