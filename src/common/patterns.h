// Lists of file patterns, "*.jpg;*.tif": "*" any text, "?" one character, in any case, as camera
// files come. "*.*" fits every name, and so does a list without patterns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarn {

class NamePatterns {
public:
    explicit NamePatterns(std::string_view patterns);

    bool Matches(std::string_view name) const;

private:
    std::vector<std::string> m_folded;
};

} // namespace tarn
