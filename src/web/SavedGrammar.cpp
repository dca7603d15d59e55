#include "web/SavedGrammar.h"

#include "common/text.h"

#include <algorithm>
#include <array>
#include <string>

namespace tarn {

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kMarkup = "<>\"'`\\";

bool IsLetter(char c) {
    return (c | 0x20) >= 'a' && (c | 0x20) <= 'z';
}

bool HasControl(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

bool Has(std::string_view text, std::string_view what) {
    return text.find(what) != std::string_view::npos;
}

bool HasAnyOf(std::string_view text, std::string_view characters) {
    return text.find_first_of(characters) != std::string_view::npos;
}

// Five digits, too: some colours are written so.
bool IsColor(std::string_view text) {
    return (text.size() == 5 || text.size() == 6) &&
           text.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

// An address of a page: relative, or of a scheme that only shows. What stands in front of the first
// separator would be read as one, entities and all.
bool IsLink(std::string_view text) {
    constexpr std::array kSchemes = {"http", "https", "ftp", "file", "mailto"};
    const std::string_view front = text.substr(0, text.find_first_of("/?#"));
    const std::size_t colon = front.find(':');
    if (HasAnyOf(text, "<>\"'`") || Has(front, "&") || text.starts_with(' ')) return false;
    if (colon == std::string_view::npos || colon == 1) return true; // "C:" is nobody's scheme
    const std::string scheme = FoldCase(front.substr(0, colon));
    return std::any_of(kSchemes.begin(), kSchemes.end(),
                       [&](const char* known) { return scheme == FoldCase(known); });
}

// The plain tags that people write into titles, without attributes.
bool IsPlainTag(std::string_view tag) {
    constexpr std::array kPlain = {"b",   "i",   "u",     "s",  "em", "strong",
                                   "big", "sub", "small", "br", "tt", "sup"};
    if (tag.starts_with('/')) tag.remove_prefix(1);
    const std::string name = FoldCase(tag);
    return std::any_of(kPlain.begin(), kPlain.end(),
                       [&](const char* plain) { return name == FoldCase(plain); });
}

// Whatever people write, but nothing that does something. "<" begins a tag only before these.
bool IsFreeText(std::string_view text) {
    if (Has(text, "-->") || Has(text, "--!>")) return false; // the end of the block
    for (std::size_t at = text.find('<'); at != std::string_view::npos;
         at = text.find('<', at + 1)) {
        const char next = at + 1 < text.size() ? text[at + 1] : '<';
        if (!IsLetter(next) && !Has("/!?<", std::string_view(&next, 1))) continue;
        const std::size_t end = text.find('>', at);
        if (end == std::string_view::npos || !IsPlainTag(text.substr(at + 1, end - at - 1)))
            return false;
    }
    return true;
}

} // namespace

bool SavedGrammar::Allows(std::string_view text) const {
    if (HasControl(text)) return false;
    if (kind == Kind::FreeText) return IsFreeText(text);
    if (Has(text, "--")) return false;
    switch (kind) {
    case Kind::Color:
        return IsColor(text);
    case Kind::Font:
        return !HasAnyOf(text, kMarkup) && !HasAnyOf(text, "{}();:/&@#*");
    case Kind::Link:
        return IsLink(text);
    case Kind::Mail:
        return !HasAnyOf(text, kMarkup) && !HasAnyOf(text, "&:/?#");
    case Kind::NamePart:
        return !HasAnyOf(text, kMarkup) && !HasAnyOf(text, "/&:?#");
    case Kind::Digits:
        return text.size() < 10 && text.find_first_not_of(kDigits) == std::string_view::npos;
    case Kind::Boxes:
        return text.size() == 5 && text.find_first_not_of("01") == std::string_view::npos;
    case Kind::FreeText:
    case Kind::Number:
        break;
    }
    return false;
}

} // namespace tarn
