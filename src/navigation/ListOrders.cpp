#include "navigation/ListOrders.h"

#include "common/text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tarn {

namespace {

constexpr std::size_t kMostFolders = 200;
constexpr std::string_view kBetween = "//"; // no path of a folder has it
constexpr std::string_view kNatural = ",natural";

std::int64_t TimeOf(const FileLook& look) {
    return look.seconds;
}
std::int64_t SizeOf(const FileLook& look) {
    return look.bytes;
}
std::string TypeOf(std::string_view name) {
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? std::string() : FoldCase(name.substr(point + 1));
}

template <int stars> bool HasStars(const Mark& mark) {
    return mark.stars >= stars;
}

SortKind Measure(const char* name, const char* caption) {
    return {name,    caption, SortNeeds::Measures,
            nullptr, nullptr, &kFrameNumbers[FrameNumberNamed(name)]};
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The digits from here on, without the noughts ahead of them.
std::string_view NumberAt(std::string_view text, std::size_t& at) {
    while (at < text.size() && text[at] == '0') ++at;
    const std::size_t from = at;
    while (at < text.size() && IsDigit(text[at])) ++at;
    return text.substr(from, at - from);
}

// Of texts that are folded already.
int CompareNaturally(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (IsDigit(a[i]) && IsDigit(b[j])) {
            const std::string_view x = NumberAt(a, i);
            const std::string_view y = NumberAt(b, j);
            if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
            if (const int order = x.compare(y); order != 0) return order;
        } else if (a[i] != b[j]) {
            return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[j]) ? -1 : 1;
        } else {
            ++i;
            ++j;
        }
    }
    return int(i < a.size()) - int(j < b.size());
}

std::vector<std::string> InNaturalOrder(std::vector<std::string> names) {
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) keyed.emplace_back(FoldCase(name), std::move(name));
    std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
        return CompareNaturally(a.first, b.first) < 0;
    });
    names.clear();
    for (auto& [folded, name] : keyed) names.push_back(std::move(name));
    return names;
}

template <typename Key>
std::vector<std::string> ByKeys(std::vector<std::pair<Key, std::string>> keyed) {
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> names;
    names.reserve(keyed.size());
    for (auto& [key, name] : keyed) names.push_back(std::move(name));
    return names;
}

std::string WordOf(const ListOrder& order) {
    std::string word = SortKinds()[static_cast<std::size_t>(order.kind)].word;
    if (order.natural) word += kNatural;
    return word;
}

std::optional<ListOrder> OrderOf(std::string_view word) {
    ListOrder order;
    order.natural = word.ends_with(kNatural);
    if (order.natural) word.remove_suffix(kNatural.size());
    const auto& kinds = SortKinds();
    for (std::size_t i = 0; i < kinds.size(); ++i)
        if (word == kinds[i].word) {
            order.kind = static_cast<int>(i);
            return order;
        }
    return {};
}

// "size:/pictures"
struct Entry {
    std::string_view word;
    std::string_view folder;
};

std::vector<Entry> EntriesOf(std::string_view stored) {
    std::vector<Entry> entries;
    while (!stored.empty()) {
        const std::size_t end = stored.find(kBetween);
        const std::string_view each = stored.substr(0, end);
        const std::size_t colon = each.find(':');
        if (colon != std::string_view::npos)
            entries.push_back({each.substr(0, colon), each.substr(colon + 1)});
        if (end == std::string_view::npos) break;
        stored.remove_prefix(end + kBetween.size());
    }
    return entries;
}

} // namespace

const std::vector<SortKind>& SortKinds() {
    static const std::vector<SortKind> kinds{
        {"name", "&Name", SortNeeds::Nothing},
        {"capture", "&Capture time", SortNeeds::CaptureTime},
        {"time", "&File time", SortNeeds::Look, TimeOf},
        {"size", "&Size", SortNeeds::Look, SizeOf},
        {"type", "&Type", SortNeeds::Nothing, nullptr, TypeOf},
        {"mark", "&Mark", SortNeeds::Mark},
        Measure("hfr", "&HFR"),
        Measure("fwhm", "F&WHM"),
        Measure("eccentricity", "Eccentr&icity"),
        Measure("stars", "Sta&rs"),
        Measure("background", "&Background"),
        Measure("noise", "N&oise"),
        Measure("saturated", "Sat&urated"),
        Measure("transparency", "Tr&ansparency"),
        Measure("sharpness", "Shar&pness"),
        Measure("score", "Scor&e"),
    };
    return kinds;
}

const std::vector<MarkChoiceRow>& MarkChoices() {
    static const std::vector<MarkChoiceRow> rows{
        {"Kept", [](const Mark& mark) { return mark.decision == Decision::Keep; }},
        {"Rejected", [](const Mark& mark) { return mark.decision == Decision::Reject; }},
        {"Not yet judged", [](const Mark& mark) { return mark == Mark(); }},
        {"1 star and more", HasStars<1>},
        {"2 stars and more", HasStars<2>},
        {"3 stars and more", HasStars<3>},
        {"4 stars and more", HasStars<4>},
        {"5 stars", HasStars<5>},
    };
    return rows;
}

bool NaturalLess(std::string_view a, std::string_view b) {
    return CompareNaturally(FoldCase(a), FoldCase(b)) < 0;
}

std::int64_t SortKeyOf(const Mark& mark) {
    const int group = mark.decision == Decision::Keep ? 0 : mark.decision == Decision::None ? 1 : 2;
    return group * (kMostStars + 1) + kMostStars - mark.stars;
}

std::optional<std::int64_t> SortKeyOf(const JudgedFrame& frame, const FrameNumber& number) {
    constexpr double kSteps = 1e6; // of a number's unit
    constexpr double kMost = 1e12;
    const double value = number.value(frame);
    if (!std::isfinite(value)) return {};
    const auto key = static_cast<std::int64_t>(std::clamp(value, -kMost, kMost) * kSteps);
    return number.better == Better::More ? -key : key;
}

std::vector<std::string> Sorted(std::vector<std::string> names, const ListOrder& order,
                                const SortKeyOfName& keyOf) {
    if (order.natural) names = InNaturalOrder(std::move(names));
    const SortKind& kind = SortKinds()[static_cast<std::size_t>(order.kind)];
    if (kind.keyOfName) {
        std::vector<std::pair<std::string, std::string>> keyed;
        keyed.reserve(names.size());
        for (std::string& name : names) keyed.emplace_back(kind.keyOfName(name), std::move(name));
        return ByKeys(std::move(keyed));
    }
    if (kind.needs == SortNeeds::Nothing) return names;
    std::vector<std::pair<std::int64_t, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) {
        const std::int64_t key = keyOf(name).value_or(std::numeric_limits<std::int64_t>::max());
        keyed.emplace_back(key, std::move(name));
    }
    return ByKeys(std::move(keyed));
}

ListOrder OrderOfFolder(std::string_view stored, std::string_view folder) {
    for (const Entry& entry : EntriesOf(stored))
        if (entry.folder == folder) return OrderOf(entry.word).value_or(ListOrder());
    return {};
}

std::string WithOrder(std::string_view stored, std::string_view folder, const ListOrder& order) {
    std::string text;
    std::size_t kept = 0;
    const auto add = [&](std::string_view word, std::string_view path) {
        if (kept++ > 0) text += kBetween;
        text.append(word).append(":").append(path);
    };
    if (order != ListOrder()) add(WordOf(order), folder);
    for (const Entry& entry : EntriesOf(stored))
        if (entry.folder != folder && kept < kMostFolders) add(entry.word, entry.folder);
    return text;
}

} // namespace tarn
