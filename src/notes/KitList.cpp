#include "notes/KitList.h"

#include "common/codepage.h"
#include "common/text.h"
#include "common/utf8.h"

#include <algorithm>

namespace tarn {

namespace {

const char* KeywordOf(NoteEntry entry) {
    return NoteEntryRows()[static_cast<std::size_t>(entry)].caption;
}

// Editors of today write UTF-8, those of old the code page.
std::string AsText(std::string_view text) {
    return IsUtf8(text) ? std::string(text) : FromCodePage(text);
}

std::optional<KitItem> ItemOf(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    const auto parts = Split(line, ':');
    if (parts.size() < 2) return {};
    for (const NoteEntry entry : kKitEntries) {
        if (parts[0] != KeywordOf(entry)) continue;
        KitItem item{entry, AsText(Trim(parts[1])), {}};
        for (std::size_t i = 2; i < parts.size(); ++i)
            if (const auto name = Trim(parts[i]); !name.empty())
                item.headerNames.push_back(AsText(name));
        if (item.name.empty()) return {};
        return item;
    }
    return {};
}

template <typename Take> void EachLine(std::string_view bytes, const Take& take) {
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        take(bytes.substr(0, end));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
}

} // namespace

std::vector<KitItem> ParseKit(std::string_view bytes) {
    std::vector<KitItem> items;
    EachLine(bytes, [&](std::string_view line) {
        if (auto item = ItemOf(line)) items.push_back(std::move(*item));
    });
    return items;
}

std::string KitBytes(std::span<const KitItem> items, std::string_view before) {
    std::string bytes;
    EachLine(before, [&](std::string_view line) {
        if (!ItemOf(line)) bytes.append(line).append("\n");
    });
    for (const KitItem& item : items) {
        bytes += KeywordOf(item.entry) + (":" + item.name);
        for (const std::string& name : item.headerNames) bytes += ":" + name;
        bytes += kLineEnd;
    }
    return bytes;
}

std::vector<std::string> HeaderNamesOf(std::string_view typed) {
    std::vector<std::string> names;
    for (const std::string& part : Split(typed, ';'))
        if (const auto name = Trim(part); !name.empty()) names.emplace_back(name);
    return names;
}

std::string FaultOf(const KitItem& item) {
    if (item.name.empty()) return "an item needs a name";
    if (Contains(item.name, ":")) return "'" + item.name + "': a name has no colon";
    for (const std::string& name : item.headerNames)
        if (Contains(name, ":")) return "'" + name + "': a header name has no colon here";
    return {};
}

const KitItem* KitFor(std::span<const KitItem> items, NoteEntry entry, std::string_view written) {
    const std::string wanted = FoldCase(Trim(written));
    if (wanted.empty()) return nullptr;
    const auto means = [&](const std::string& name) { return FoldCase(name) == wanted; };
    const auto found = std::find_if(items.begin(), items.end(), [&](const KitItem& item) {
        return item.entry == entry &&
               (means(item.name) ||
                std::any_of(item.headerNames.begin(), item.headerNames.end(), means));
    });
    return found == items.end() ? nullptr : &*found;
}

} // namespace tarn
