#include "marks/Sidecar.h"

#include "common/text.h"
#include "common/utf8.h"
#include "marks/XmpFrame.h"
#include "marks/XmpLibrary.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tarn {

namespace {

using namespace std::string_view_literals;

constexpr char kXmp[] = "http://ns.adobe.com/xap/1.0/";
constexpr char kMedia[] = "http://ns.adobe.com/xmp/1.0/DynamicMedia/";
constexpr char kDigikam[] = "http://www.digikam.org/ns/1.0/";
constexpr char kOwn[] = "http://tarn-view.invalid/ns/1.0/";

constexpr std::string_view kRdf = "http://www.w3.org/1999/02/22-rdf-syntax-ns#";

constexpr char kRating[] = "Rating";
constexpr char kPick[] = "pick";
constexpr char kLabel[] = "PickLabel";
constexpr char kStars[] = "Stars";

constexpr int kLabelRejected = 1;
constexpr int kLabelAccepted = 3;

constexpr int kDeepest = 200; // elements within one another; the library goes down by calls

std::optional<int> NumberOf(const std::optional<std::string>& text) {
    if (!text) return {};
    std::string_view digits = Trim(*text);
    if (digits.starts_with('+')) digits.remove_prefix(1);
    double number = 0;
    const auto [end, code] = std::from_chars(digits.begin(), digits.end(), number);
    if (code != std::errc() || end != digits.end() || !(std::abs(number) < 1000)) return {};
    return int(std::lround(number));
}

std::optional<int> NumberIn(const XmpPacket& packet, const char* space, const char* name) {
    return NumberOf(packet.Text(space, name));
}

Decision DecisionIn(const XmpPacket& packet, int rating) {
    auto pick = NumberIn(packet, kMedia, kPick);
    // Our reject, which a program that knows the rating alone has lifted.
    if (rating >= 0 && pick.value_or(0) < 0 && packet.Text(kOwn, kStars)) pick = 0;
    if (rating < 0 || pick.value_or(0) < 0) return Decision::Reject;
    if (pick) return *pick > 0 ? Decision::Keep : Decision::None;
    const int label = NumberIn(packet, kDigikam, kLabel).value_or(0);
    return label == kLabelRejected   ? Decision::Reject
           : label == kLabelAccepted ? Decision::Keep
                                     : Decision::None;
}

Mark MarkIn(const XmpPacket& packet) {
    const int rating = NumberIn(packet, kXmp, kRating).value_or(0);
    const int stars = rating < 0 ? NumberIn(packet, kOwn, kStars).value_or(0) : rating;
    return {DecisionIn(packet, rating), std::clamp(stars, 0, kMostStars)};
}

bool Put(XmpPacket& packet, const Mark& mark) {
    const bool rejected = mark.decision == Decision::Reject;
    const int pick = rejected ? -1 : mark.decision == Decision::Keep ? 1 : 0;
    if (!packet.SetText(kXmp, kRating, std::to_string(rejected ? -1 : mark.stars)) ||
        !packet.SetText(kMedia, kPick, std::to_string(pick)))
        return false;
    const int label = rejected ? kLabelRejected : pick > 0 ? kLabelAccepted : 0;
    if (packet.Text(kDigikam, kLabel) && !packet.SetText(kDigikam, kLabel, std::to_string(label)))
        return false;
    packet.Delete(kOwn, kStars);
    if (!rejected) return true;
    return packet.SetText(kOwn, kStars, std::to_string(mark.stars));
}

// Documents that make much out of little, and those that are deeper than any sidecar, are not for
// the library.
bool IsHarmless(std::string_view bytes) {
    int depth = 0;
    std::size_t at = 0;
    while ((at = bytes.find('<', at)) != std::string_view::npos) {
        const std::string_view rest = bytes.substr(++at);
        if (rest.starts_with("!DOCTYPE")) return false;
        if (rest.starts_with("!--")) {
            at = bytes.find("-->", at);
        } else if (rest.starts_with("![CDATA[")) {
            at = bytes.find("]]>", at);
        } else if (rest.starts_with('/')) {
            --depth;
        } else if (!rest.starts_with('?')) {
            at = bytes.find_first_of("<>", at);
            if (at == std::string_view::npos || bytes[at] == '<') return false;
            if (bytes[at - 1] != '/' && ++depth > kDeepest) return false;
        }
        if (at == std::string_view::npos) return false;
    }
    return true;
}

// UTF-16, by its mark of byte order or by the first sign, which is "<".
std::optional<bool> HighFirst(std::string_view bytes) {
    if (bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\0<"sv)) return true;
    if (bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("<\0"sv)) return false;
    return {};
}

std::string FromUtf16(std::string_view bytes, bool highFirst) {
    const auto unit = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return char32_t(highFirst ? first << 8U | second : second << 8U | first);
    };
    std::string text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t code = unit(at);
        if (code >= 0xD800 && code < 0xDC00 && at + 3 < bytes.size()) {
            const char32_t low = unit(at + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00);
                at += 2;
            }
        }
        constexpr char32_t kNoCharacter = 0xFFFD;
        AppendUtf8(text, code >= 0xD800 && code < 0xE000 ? kNoCharacter : code);
    }
    return text;
}

// In UTF-8, from its first sign on: a declaration of another coding would be false, and none is
// needed.
std::string InUtf8(std::string_view bytes) {
    const auto highFirst = HighFirst(bytes);
    std::string text = highFirst ? FromUtf16(bytes, *highFirst) : std::string(bytes);
    constexpr std::string_view kByteOrder = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrder)) text.erase(0, kByteOrder.size());
    text.erase(text.find_last_not_of('\0') + 1); // of a block that was filled up
    const auto end = text.find("?>");
    if (highFirst && text.starts_with("<?xml ") && end != std::string::npos) text.erase(0, end + 2);
    return text;
}

bool Say(std::string* error, const char* text) {
    if (error) *error = text;
    return false;
}

void NameSpaces(const XmpPacket& packet) {
    packet.NameSpace(kDigikam, "digiKam");
    packet.NameSpace(kOwn, "tarn");
}

bool ParseForeign(XmpPacket& packet, std::string_view bytes, std::string* error) {
    if (bytes.size() > kLargestSidecar) return Say(error, "it is too large for a sidecar");
    const std::string text = InUtf8(bytes);
    if (text.empty()) return Say(error, "it is empty");
    // The library takes any XML for an empty one.
    if (text.find(kRdf) == std::string::npos || !IsHarmless(text))
        return Say(error, "it is no XMP");
    return packet.Parse(text, error);
}

// Empty, and why, when it cannot be made.
std::string ChangedBytes(std::string_view bytes, const MarkChange& change, std::string* error) {
    XmpPacket packet;
    NameSpaces(packet);
    if (!bytes.empty() && !ParseForeign(packet, bytes, error)) return {};
    std::string changed;
    if (Put(packet, Changed(MarkIn(packet), change))) changed = packet.Bytes();
    if (changed.empty()) Say(error, "its rating cannot be replaced");
    return changed;
}

// The library reads the very same from it.
bool SaysTheSame(std::string_view text, const std::string& changed) {
    XmpPacket packet;
    NameSpaces(packet);
    return ParseForeign(packet, text, nullptr) && packet.Bytes() == changed;
}

// The library writes names of spaces as they came, with signs that end them: it cannot read that.
bool IsWhole(std::string_view before, const MarkChange& change, const std::string& changed) {
    const auto mark = MarkOfXmp(before, nullptr);
    return mark && MarkOfXmp(changed, nullptr) == Changed(*mark, change);
}

} // namespace

std::optional<Mark> MarkOfXmp(std::string_view bytes, std::string* error) {
    XmpPacket packet;
    NameSpaces(packet);
    if (!ParseForeign(packet, bytes, error)) return {};
    return MarkIn(packet);
}

std::optional<std::string> XmpWithMark(std::string_view bytes, const MarkChange& change,
                                       std::string* error) {
    std::string changed = ChangedBytes(bytes, change, error);
    if (changed.empty() || bytes.empty())
        return changed.empty() ? std::nullopt : std::optional(changed);
    // Around the root all stays, as long as the whole is still as good.
    std::string framed = WithRootOf(InUtf8(bytes), changed);
    if (!framed.empty() && SaysTheSame(framed, changed)) return framed;
    if (IsWhole(bytes, change, changed)) return changed;
    Say(error, "its rating cannot be replaced");
    return {};
}

} // namespace tarn
