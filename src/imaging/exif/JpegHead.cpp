#include "imaging/exif/JpegHead.h"

#include <algorithm>
#include <optional>

namespace tarn {

namespace {

using namespace std::string_literals;

constexpr unsigned kMake = 271;
constexpr unsigned kText = 2;
constexpr unsigned kLong = 4;
constexpr unsigned kUndefined = 7;
constexpr std::size_t kTiffHead = 8;
constexpr std::size_t kEntryBytes = 12;
constexpr std::size_t kMostTextBytes = 400;

// Behind the places at which a date may be written over in the file itself: here they are others.
constexpr std::size_t kDataPlace = 3000;

// Those that the reader acts on, in their order.
constexpr unsigned kShown[] = {kMake, 272,   274,   33434, 33437,      34850, 34855, 36867,
                               37380, 37382, 37383, 37385, kMakerNote, 37386, 41493, 41989};

std::string Number(std::uint64_t number, int size, bool highFirst) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes.push_back(char(number >> (8 * (highFirst ? size - 1 - i : i))));
    return bytes;
}

// An entry on its way into the new block.
struct Kept {
    TiffEntry entry;
    std::string data;     // what stands behind the directories; empty where the value field has all
    std::int64_t was = 0; // offset at which the data stood
};

class Layout {
public:
    explicit Layout(bool highFirst) : m_highFirst(highFirst) {}

    void Take(const TiffBlock& block, const std::vector<TiffEntry>& entries,
              std::vector<Kept>& directory);
    void TakeMaker(std::string_view bytes);
    std::string Bytes();

    std::vector<Kept> first;
    std::vector<Kept> exif;

private:
    std::string DirectoryBytes(std::vector<Kept>& directory, std::size_t& dataPlace);
    void MoveCanonNote(Kept& note, std::size_t place) const;
    std::string Of(std::uint64_t number, int size) const {
        return Number(number, size, m_highFirst);
    }

    bool m_highFirst;
    bool m_canon = false;
};

// Short texts stand behind the directories, too: the reader looks for all texts there.
void Layout::Take(const TiffBlock& block, const std::vector<TiffEntry>& entries,
                  std::vector<Kept>& directory) {
    for (const TiffEntry& entry : entries) {
        if (!IsShownTag(entry.tag)) continue;
        Kept kept{entry, {}, block.OffsetOf(entry)};
        const bool note = entry.tag == kMakerNote;
        if (entry.type == kText || entry.Bytes() > 4)
            kept.data = block.Data(entry, note ? kMostMakerBytes : kMostTextBytes);
        if (entry.Bytes() > 4 && kept.data.empty()) continue; // outside of the file
        if (entry.type == kText || note) kept.entry.count = std::uint32_t(kept.data.size());
        if (entry.tag == kMake) m_canon = kept.data.starts_with("Canon");
        directory.push_back(std::move(kept));
    }
}

// A note that stands apart has a TIFF header of its own, from which its offsets count.
void Layout::TakeMaker(std::string_view bytes) {
    if (bytes.size() <= kTiffHead) return;
    Kept& note = exif.emplace_back();
    note.entry.tag = kMakerNote;
    note.entry.type = kUndefined;
    note.entry.count = std::uint32_t(bytes.size() - kTiffHead);
    note.data = std::string(bytes.substr(kTiffHead));
    note.was = kTiffHead;
}

// The offsets in the notes of this maker count from the block's beginning, others from their own.
void Layout::MoveCanonNote(Kept& note, std::size_t place) const {
    const TiffEntry& entry = note.entry;
    const std::size_t count = NumberAt(note.data, 0, 2, m_highFirst);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = 2 + i * kEntryBytes;
        if (at + kEntryBytes > note.data.size()) return;
        TiffEntry inside;
        inside.type = unsigned(NumberAt(note.data, at + 2, 2, m_highFirst));
        inside.count = std::uint32_t(NumberAt(note.data, at + 4, 4, m_highFirst));
        const auto was = std::int64_t(NumberAt(note.data, at + 8, 4, m_highFirst));
        const std::int64_t moved = was - note.was;
        if (inside.Bytes() <= 4 || moved < 0 || moved >= std::int64_t(entry.count)) continue;
        note.data.replace(at + 8, 4, Of(std::uint64_t(moved) + place, 4));
    }
}

std::string Layout::DirectoryBytes(std::vector<Kept>& directory, std::size_t& dataPlace) {
    std::string bytes = Of(directory.size(), 2);
    for (Kept& kept : directory) {
        if (!kept.data.empty()) {
            kept.entry.value = Of(dataPlace, 4);
            if (kept.entry.tag == kMakerNote && m_canon) MoveCanonNote(kept, dataPlace);
            kept.data.resize(kept.data.size() + kept.data.size() % 2);
            dataPlace += kept.data.size();
        }
        bytes += Of(kept.entry.tag, 2) + Of(kept.entry.type, 2) + Of(kept.entry.count, 4);
        bytes += kept.entry.value;
    }
    return bytes + Of(0, 4); // no further directory
}

std::string Layout::Bytes() {
    const auto bytesOf = [](const std::vector<Kept>& directory) {
        return 2 + directory.size() * kEntryBytes + 4;
    };
    std::size_t exifPlace = kTiffHead + bytesOf(first);
    if (!exif.empty()) {
        exifPlace += kEntryBytes;
        first.push_back({{kExifDirectory, kLong, 1, Of(exifPlace, 4)}, {}, 0});
    }
    std::size_t dataPlace = std::max(kDataPlace, exifPlace + (exif.empty() ? 0 : bytesOf(exif)));
    const std::size_t dataFrom = dataPlace;
    std::string block = (m_highFirst ? "MM" : "II") + Of(42, 2) + Of(kTiffHead, 4);
    block += DirectoryBytes(first, dataPlace);
    if (!exif.empty()) block += DirectoryBytes(exif, dataPlace);
    block.resize(dataFrom, '\0');
    for (const auto* directory : {&first, &exif})
        for (const Kept& kept : *directory) block += kept.data;
    const std::string exifSegment = "Exif\0\0"s + block;
    return "\xFF\xD8\xFF\xE1" + Number(exifSegment.size() + 2, 2, true) + exifSegment;
}

} // namespace

bool IsShownTag(unsigned tag) {
    return std::find(std::begin(kShown), std::end(kShown), tag) != std::end(kShown);
}

std::string JpegHead(const TiffBlock& first, const TiffBlock& exif, std::string_view maker) {
    Layout layout(first.HighFirst());
    const std::vector<TiffEntry> entries = first.Directory(first.FirstDirectory());
    layout.Take(first, entries, layout.first);
    for (const TiffEntry& entry : entries)
        if (entry.tag == kExifDirectory)
            layout.Take(first, first.Directory(first.OffsetOf(entry)), layout.exif);
    if (exif.FirstDirectory() != 0 && exif.HighFirst() == first.HighFirst())
        layout.Take(exif, exif.Directory(exif.FirstDirectory()), layout.exif);
    layout.TakeMaker(maker);
    return layout.first.empty() && layout.exif.empty() ? std::string() : layout.Bytes();
}

} // namespace tarn
