#include "marks/XmpFrame.h"

#include <optional>

namespace tarn {

namespace {

constexpr auto kNone = std::string_view::npos;
constexpr int kDeepestRoot = 1; // it is the document's or stands in one outer element

struct Place {
    std::size_t begin = 0;
    std::size_t end = 0;
};

// One piece of markup: where it ends, and what it does to the depth.
struct Tag {
    std::size_t end = kNone;
    std::string_view name = {};
    bool opens = false;
    bool closes = false;
};

std::size_t Behind(std::string_view text, std::string_view sign, std::size_t from) {
    const std::size_t at = text.find(sign, from);
    return at == kNone ? kNone : at + sign.size();
}

// Signs in quotes end no tag.
std::size_t EndOfTag(std::string_view text, std::size_t at) {
    while (at != kNone && (at = text.find_first_of("\"'>", at)) != kNone) {
        if (text[at] == '>') return at + 1;
        at = Behind(text, text.substr(at, 1), at + 1);
    }
    return kNone;
}

Tag TagAt(std::string_view text, std::size_t at) {
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("<!--")) return {Behind(text, "-->", at + 4)};
    if (rest.starts_with("<![CDATA[")) return {Behind(text, "]]>", at)};
    if (rest.starts_with("<?")) return {Behind(text, "?>", at)};
    Tag tag{EndOfTag(text, at)};
    if (tag.end == kNone) return tag;
    tag.closes = rest.starts_with("</");
    tag.opens = !tag.closes;
    const std::string_view whole = text.substr(at, tag.end - at);
    tag.name = whole.substr(tag.closes ? 2 : 1);
    tag.name = tag.name.substr(0, tag.name.find_first_of(" \t\r\n/>"));
    if (whole.ends_with("/>")) tag.closes = true;
    return tag;
}

bool IsRoot(std::string_view name) {
    const std::size_t colon = name.find(':');
    return name.substr(colon == kNone ? 0 : colon + 1) == "RDF";
}

std::optional<Place> RootOf(std::string_view text) {
    std::optional<std::size_t> begin;
    int depth = 0;
    int depthOfRoot = 0;
    for (std::size_t at = text.find('<'); at != kNone; at = text.find('<', at)) {
        const Tag tag = TagAt(text, at);
        if (tag.end == kNone) return {};
        if (tag.opens && !begin && depth <= kDeepestRoot && IsRoot(tag.name)) {
            begin = at;
            depthOfRoot = depth;
        }
        depth += int(tag.opens) - int(tag.closes);
        if (begin && tag.closes && depth == depthOfRoot) return Place{*begin, tag.end};
        at = tag.end;
    }
    return {};
}

} // namespace

std::string WithRootOf(std::string_view file, std::string_view other) {
    const auto place = RootOf(file);
    const auto root = RootOf(other);
    if (!place || !root) return {};
    std::string text(file.substr(0, place->begin));
    text += other.substr(root->begin, root->end - root->begin);
    text += file.substr(place->end);
    return text;
}

} // namespace tarn
