// Lists of file patterns, "*.jpg;*.tif": "*" any text, "?" one character, in any case, as camera
// files come. "*.*" fits every name, and so does a list without patterns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// What a new user's file list shows of pictures.
inline constexpr char kPictureTypes[] = "*.jpg;*.tif;*.gif;*.bmp;*.txt";

class NamePatterns {
public:
    explicit NamePatterns(std::string_view patterns);

    bool Matches(std::string_view name) const;

private:
    std::vector<std::string> m_folded;
};

// In the order of the file list: by the folded name, names that differ in case alone by their
// bytes.
std::vector<std::string> InListOrder(std::vector<std::string> names);
// One more, where those stand in that order.
void InsertInListOrder(std::vector<std::string>& names, const std::string& name);

} // namespace tarn
