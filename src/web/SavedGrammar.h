// What a value may be that is read back from a page. The page may be anybody's, and what is taken
// from it stands in every page that is written afterwards.
#pragma once

#include <string_view>

namespace tarn {

struct SavedGrammar {
    enum class Kind { FreeText, Color, Font, Link, Mail, NamePart, Digits, Boxes, Number };
    Kind kind = Kind::FreeText;
    int least = 0; // of a number
    int most = 32767;

    bool Allows(int number) const { return number >= least && number <= most; }

    // Of UTF-8.
    bool Allows(std::string_view text) const;
};

} // namespace tarn
