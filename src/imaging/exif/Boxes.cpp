#include "imaging/exif/Boxes.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tarn {

namespace {

constexpr int kMostBoxes = 1000;             // of one level; made files have thousands
constexpr std::int64_t kMostItems = 1 << 20; // bytes of a list of items
constexpr std::int64_t kItemHead = 256;      // of which an item tells what it is

std::uint64_t Big(std::string_view bytes, std::size_t place, int size) {
    return NumberAt(bytes, place, size, true);
}

// Calls `look` with name and contents of each box until it answers true.
template <typename Look> void EachBox(const FileBytes& file, Span within, const Look& look) {
    const std::int64_t end = std::min(within.place + within.length, file.Size());
    std::int64_t place = within.place;
    for (int i = 0; i < kMostBoxes && place + 8 <= end; ++i) {
        const std::string head = file.At(place, 16);
        std::uint64_t length = Big(head, 0, 4);
        std::int64_t headed = 8;
        if (length == 1) {
            length = Big(head, 8, 8);
            headed = 16;
        }
        if (length == 0) length = std::uint64_t(end - place); // the last one
        if (length < std::uint64_t(headed) || length > std::uint64_t(end - place)) return;
        if (look(std::string_view(head).substr(4, 4),
                 Span{place + headed, std::int64_t(length) - headed}))
            return;
        place += std::int64_t(length);
    }
}

} // namespace

bool HasFewBoxes(const FileBytes& file) {
    int count = 0;
    EachBox(file, WholeOf(file), [&](std::string_view, Span) { return ++count == kMostBoxes; });
    return count < kMostBoxes;
}

namespace {

// The boxes of items begin with four bytes of version and flags.
std::string ItemBytes(const FileBytes& file, Span meta, std::string_view name) {
    const Span box = FindBox(file, meta, name);
    return box.length > kMostItems ? std::string() : file.At(box.place, std::size_t(box.length));
}

// The number of the first item that `is` says, asked with its kind and what stands behind that.
template <typename Is>
std::optional<std::uint64_t> FindItem(const FileBytes& file, Span meta, const Is& is) {
    const Span list = FindBox(file, meta, "iinf");
    const std::string head = file.At(list.place, 8);
    if (list.length < 8) return {};
    const std::int64_t counted = head[0] == 0 ? 6 : 8;
    std::optional<std::uint64_t> found;
    EachBox(file, {list.place + counted, list.length - counted},
            [&](std::string_view name, Span box) {
                if (name != "infe") return false;
                const std::string item =
                    file.At(box.place, std::size_t(std::min(box.length, kItemHead)));
                if (item.size() < 12 || (item[0] != 2 && item[0] != 3)) return false;
                const int size = item[0] == 2 ? 2 : 4;
                const auto kind = std::string_view(item).substr(std::size_t(4 + size + 2));
                if (!is(kind.substr(0, 4), kind.substr(std::min<std::size_t>(4, kind.size()))))
                    return false;
                found = Big(item, 4, size);
                return true;
            });
    return found;
}

struct ItemPlace {
    bool inData = false; // counted within the box of small data, not the file
    Span span;
};

// Where the first piece of an item stands.
std::optional<ItemPlace> PlaceOf(const std::string& list, std::uint64_t wanted) {
    if (list.size() < 8) return {};
    const int version = list[0];
    const int offsetSize = std::uint8_t(list[4]) >> 4;
    const int lengthSize = std::uint8_t(list[4]) & 15;
    const int baseSize = std::uint8_t(list[5]) >> 4;
    const int indexSize = version == 0 ? 0 : std::uint8_t(list[5]) & 15;
    std::size_t place = 6;
    const auto next = [&](int size) {
        const std::uint64_t number = Big(list, place, size);
        place += std::size_t(size);
        return number;
    };
    const std::uint64_t count = next(version < 2 ? 2 : 4);
    for (std::uint64_t i = 0; i < count && place < list.size(); ++i) {
        const std::uint64_t item = next(version < 2 ? 2 : 4);
        const std::uint64_t method = version == 0 ? 0 : next(2) & 15;
        next(2); // of the file that holds the data: this one
        const std::uint64_t base = next(baseSize);
        const std::uint64_t pieces = next(2);
        const std::size_t pieceBytes = std::size_t(indexSize + offsetSize + lengthSize);
        if (item == wanted && pieces > 0 && method < 2) {
            next(indexSize);
            const std::uint64_t offset = base + next(offsetSize);
            const std::uint64_t length = next(lengthSize);
            if (offset > INT64_MAX || length > INT64_MAX) return {};
            return ItemPlace{method == 1, {std::int64_t(offset), std::int64_t(length)}};
        }
        place += pieces * pieceBytes;
    }
    return {};
}

// The contents of the box of items, behind its version and flags.
Span MetaOf(const FileBytes& file) {
    const Span meta = FindBox(file, WholeOf(file), "meta");
    return meta.length < 4 ? Span() : Span{meta.place + 4, meta.length - 4};
}

// Cut to what the file has.
Span Held(const FileBytes& file, Span span) {
    if (span.place < 0 || span.place >= file.Size()) return {};
    span.length = std::min(span.length, file.Size() - span.place);
    return span;
}

} // namespace

Span FindBox(const FileBytes& file, Span within, std::string_view wanted) {
    Span found;
    EachBox(file, within, [&](std::string_view name, Span box) {
        if (name != wanted) return false;
        found = box;
        return true;
    });
    return found;
}

Span BehindOffset(const FileBytes& file, Span block) {
    constexpr std::int64_t kOffsetBytes = 4;
    if (block.length < kOffsetBytes) return {};
    const auto offset = std::int64_t(Big(file.At(block.place, kOffsetBytes), 0, kOffsetBytes));
    if (offset > block.length - kOffsetBytes) return {};
    return {block.place + kOffsetBytes + offset, block.length - kOffsetBytes - offset};
}

namespace {

Span SpanOf(const FileBytes& file, Span meta, std::optional<std::uint64_t> item) {
    if (!item) return {};
    auto place = PlaceOf(ItemBytes(file, meta, "iloc"), *item);
    if (!place) return {};
    if (place->inData) {
        const Span data = FindBox(file, meta, "idat");
        if (place->span.place > data.length) return {};
        place->span.place += data.place;
    }
    return Held(file, place->span);
}

} // namespace

Span ExifOfHeif(const FileBytes& file) {
    const Span meta = MetaOf(file);
    const auto item = FindItem(
        file, meta, [](std::string_view kind, std::string_view) { return kind == "Exif"; });
    return BehindOffset(file, SpanOf(file, meta, item));
}

Span XmpOfHeif(const FileBytes& file) {
    const Span meta = MetaOf(file);
    const auto item = FindItem(file, meta, [](std::string_view kind, std::string_view names) {
        return kind == "mime" && names.find("application/rdf+xml") != std::string_view::npos;
    });
    return SpanOf(file, meta, item);
}

bool HeifTurns(const FileBytes& file) {
    const Span properties = FindBox(file, FindBox(file, MetaOf(file), "iprp"), "ipco");
    return FindBox(file, properties, "irot").length > 0 ||
           FindBox(file, properties, "imir").length > 0;
}

} // namespace tarn
