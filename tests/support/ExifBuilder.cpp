#include "support/ExifBuilder.h"

#include <algorithm>
#include <cstdlib>

namespace tarn::testing {

namespace {

constexpr std::uint32_t kFirstDirectory = 8;
constexpr std::uint32_t kExifDirectoryTag = 34665;
constexpr int kNikonEntries = 31;

std::size_t DirectorySize(std::size_t entries) {
    return 2 + entries * 12 + 4;
}

void PutAt(std::string& bytes, std::size_t offset, std::string_view part) {
    if (bytes.size() < offset + part.size()) bytes.resize(offset + part.size());
    bytes.replace(offset, part.size(), part);
}

std::string SegmentHead(char marker, std::size_t size) {
    return ByteWriter(Endian::Big)
        .Raw(std::string("\xFF") + marker)
        .Word(static_cast<unsigned>(size + 2))
        .Bytes();
}

} // namespace

ByteWriter& ByteWriter::Word(unsigned value) {
    const char high = static_cast<char>(value >> 8U);
    const char low = static_cast<char>(value);
    m_bytes += m_endian == Endian::Big ? high : low;
    m_bytes += m_endian == Endian::Big ? low : high;
    return *this;
}

ByteWriter& ByteWriter::Long(std::uint32_t value) {
    const unsigned high = value >> 16U;
    const unsigned low = value & 0xFFFFU;
    return m_endian == Endian::Big ? Word(high).Word(low) : Word(low).Word(high);
}

ByteWriter& ByteWriter::Raw(std::string_view bytes) {
    m_bytes += bytes;
    return *this;
}

ExifBuilder& ExifBuilder::ExifDirectory() {
    m_inExif = true;
    return *this;
}

ExifBuilder& ExifBuilder::Ascii(unsigned tag, std::string_view text) {
    std::string bytes(text);
    bytes += '\0';
    return Data(tag, 2, static_cast<std::uint32_t>(bytes.size()), bytes);
}

ExifBuilder& ExifBuilder::Short(unsigned tag, unsigned value) {
    Directory().push_back({tag, 3, 1, ByteWriter(m_endian).Word(value).Word(0).Bytes()});
    return *this;
}

ExifBuilder& ExifBuilder::Rational(unsigned tag, std::uint32_t numerator,
                                   std::uint32_t denominator) {
    return Data(tag, 5, 1, ByteWriter(m_endian).Long(numerator).Long(denominator).Bytes());
}

ExifBuilder& ExifBuilder::SignedRational(unsigned tag, std::int32_t numerator,
                                         std::int32_t denominator) {
    return Data(tag, 10, 1,
                ByteWriter(m_endian)
                    .Long(static_cast<std::uint32_t>(numerator))
                    .Long(static_cast<std::uint32_t>(denominator))
                    .Bytes());
}

ExifBuilder& ExifBuilder::Data(unsigned tag, unsigned type, std::uint32_t count,
                               std::string_view bytes) {
    m_blocks.push_back({m_nextData, std::string(bytes)});
    Entry(tag, type, count, m_nextData);
    m_nextData += static_cast<std::uint32_t>(bytes.size() + bytes.size() % 2);
    return *this;
}

ExifBuilder& ExifBuilder::MakerNote(std::string_view bytes) {
    return Data(37500, 7, static_cast<std::uint32_t>(bytes.size()), bytes);
}

ExifBuilder& ExifBuilder::Satellites(int latitude, int longitude, unsigned height,
                                     std::string_view time) {
    constexpr unsigned kEntries = 7;
    ByteWriter directory(m_endian);
    ByteWriter data(m_endian);
    const auto dataOffset = static_cast<std::uint32_t>(m_nextData + DirectorySize(kEntries));
    const auto text = [&](unsigned tag, const char* letter) {
        directory.Word(tag).Word(2).Long(2).Raw(std::string(letter) + std::string(3, '\0'));
    };
    const auto fractions = [&](unsigned tag, const std::vector<unsigned>& values) {
        const auto offset = dataOffset + static_cast<std::uint32_t>(data.Bytes().size());
        directory.Word(tag).Word(5).Long(static_cast<std::uint32_t>(values.size())).Long(offset);
        for (const unsigned value : values) data.Long(value).Long(1);
    };
    directory.Word(kEntries);
    text(1, latitude < 0 ? "S" : "N");
    fractions(2, {static_cast<unsigned>(std::abs(latitude)), 0, 0});
    text(3, longitude < 0 ? "W" : "E");
    fractions(4, {static_cast<unsigned>(std::abs(longitude)), 0, 0});
    fractions(6, {height});
    const auto clock = [&](std::size_t at) {
        return static_cast<unsigned>(std::stoi(std::string(time.substr(at, 2))));
    };
    fractions(7, {clock(11), clock(14), clock(17)});
    directory.Word(29).Word(2).Long(11).Long(dataOffset +
                                             static_cast<std::uint32_t>(data.Bytes().size()));
    data.Raw(std::string(time.substr(0, 10)) + '\0');
    return Data(34853, 4, 1, directory.Long(0).Raw(data.Bytes()).Bytes());
}

ExifBuilder& ExifBuilder::Entry(unsigned tag, unsigned type, std::uint32_t count,
                                std::uint32_t value) {
    Directory().push_back({tag, type, count, ByteWriter(m_endian).Long(value).Bytes()});
    return *this;
}

ExifBuilder& ExifBuilder::DataFrom(std::uint32_t offset) {
    m_nextData = offset;
    return *this;
}

std::string ExifBuilder::Directory(const std::vector<Item>& items) const {
    ByteWriter writer(m_endian);
    writer.Word(static_cast<unsigned>(items.size()));
    for (const Item& item : items) {
        writer.Word(item.tag).Word(item.type).Long(item.count).Raw(item.value);
    }
    return writer.Long(0).Bytes();
}

std::string ExifBuilder::Tiff() const {
    std::vector<Item> first = m_first;
    const std::size_t pointer = m_inExif ? 1 : 0;
    const std::size_t exifOffset = kFirstDirectory + DirectorySize(first.size() + pointer);
    if (m_inExif) {
        const auto offset = static_cast<std::uint32_t>(exifOffset);
        first.push_back({kExifDirectoryTag, 4, 1, ByteWriter(m_endian).Long(offset).Bytes()});
    }
    std::string bytes = m_endian == Endian::Big ? "MM" : "II";
    bytes += ByteWriter(m_endian).Word(42).Long(kFirstDirectory).Bytes();
    bytes += Directory(first);
    if (m_inExif) bytes += Directory(m_exif);
    for (const Block& block : m_blocks) PutAt(bytes, block.offset, block.bytes);
    return bytes;
}

std::string ExifBuilder::Jpeg() const {
    const std::string body = std::string("Exif\0\0", 6) + Tiff();
    return "\xFF\xD8" + SegmentHead('\xE1', body.size()) + body + "\xFF\xD9";
}

std::string ExifBuilder::JpegJfifFirst() const {
    const std::string jfif("JFIF\0\1\1\0\0\1\0\1\0\0", 14);
    return "\xFF\xD8" + SegmentHead('\xE0', jfif.size()) + jfif + Jpeg().substr(2);
}

std::string CanonNote::Bytes(std::uint32_t offset) const {
    constexpr unsigned kWords = 60;
    const std::uint32_t settingsOffset = offset + 2 + 3 * 12 + 4;
    const auto array = [](const std::vector<Element>& elements) {
        std::vector<unsigned> words(kWords, 0);
        words[0] = kWords * 2;
        for (const Element& element : elements) {
            words[static_cast<std::size_t>(element.number)] = element.value;
        }
        ByteWriter writer(Endian::Little);
        for (const unsigned word : words) writer.Word(word);
        return writer.Bytes();
    };
    ByteWriter note(Endian::Little);
    const auto entry = [&note](unsigned tag, unsigned type, unsigned count, std::uint32_t data) {
        note.Word(tag).Word(type).Long(count).Long(data);
    };
    note.Word(3);
    entry(1, 3, kWords, settingsOffset);
    entry(2, 3, kWords, settingsOffset + kWords * 2);
    entry(6, 2, 0, 0);
    return note.Long(0).Raw(array(settings)).Raw(array(shot)).Bytes();
}

NikonNote& NikonNote::Text(unsigned tag, std::string_view text) {
    std::string bytes(text);
    bytes += '\0';
    return Add(tag, 2, static_cast<unsigned>(bytes.size()), bytes);
}

NikonNote& NikonNote::Value(unsigned tag, unsigned value) {
    m_entries += ByteWriter(Endian::Big).Word(tag).Word(3).Long(2).Word(0).Word(value).Bytes();
    ++m_count;
    return *this;
}

NikonNote& NikonNote::Rationals(unsigned tag, const std::vector<std::uint32_t>& numbers) {
    ByteWriter writer(Endian::Big);
    for (const std::uint32_t number : numbers) writer.Long(number);
    return Add(tag, 5, static_cast<unsigned>(numbers.size() / 2), writer.Bytes());
}

NikonNote& NikonNote::Add(unsigned tag, unsigned type, unsigned count, std::string_view data) {
    const auto offset =
        static_cast<std::uint32_t>(8 + DirectorySize(kNikonEntries) + m_data.size());
    m_entries += ByteWriter(Endian::Big).Word(tag).Word(type).Long(count).Long(offset).Bytes();
    m_data += data;
    ++m_count;
    return *this;
}

std::string NikonNote::Bytes() const {
    std::string entries = m_entries;
    entries.resize(std::max<std::size_t>(entries.size(), kNikonEntries * 12));
    return ByteWriter(Endian::Big)
        .Raw(std::string_view("Nikon\0\2\x10\0\0", 10))
        .Raw("MM")
        .Word(42)
        .Long(8)
        .Word(static_cast<unsigned>(m_count))
        .Raw(entries)
        .Long(0)
        .Raw(m_data)
        .Bytes();
}

std::string CanonPicture() {
    ExifBuilder exif(Endian::Little);
    exif.Ascii(271, "Canon").Ascii(272, "Canon EOS 20D").Short(274, 1).ExifDirectory();
    exif.Rational(33434, 1, 125).Rational(33437, 56, 10).Short(34850, 3).Short(34855, 400);
    exif.Ascii(36867, "2004:06:22 20:15:30").SignedRational(37380, 0, 3);
    exif.Short(37383, 5).Short(37385, 0).Rational(37386, 50, 1);
    const CanonNote note{{{3, 3}, {20, 3}, {23, 85}, {24, 17}}, {}};
    return exif.MakerNote(note.Bytes(exif.NextDataOffset())).Jpeg();
}

std::string NikonPicture() {
    NikonNote note;
    note.Value(2, 200).Text(4, "FINE   ").Text(5, "AUTO        ").Text(6, "AUTO  ");
    note.Text(7, "AF-S  ").Text(8, "NORMAL      ").Text(129, "AUTO    ");
    note.Rationals(132, {180, 10, 700, 10, 35, 10, 45, 10});
    ExifBuilder exif(Endian::Big);
    exif.Ascii(271, "NIKON CORPORATION").Ascii(272, "NIKON D70").ExifDirectory();
    exif.Rational(33434, 10, 2500).Rational(33437, 80, 10).Short(34850, 3);
    exif.Ascii(36867, "2005:07:04 21:02:11").SignedRational(37380, 2, 6);
    exif.Short(37383, 5).Short(37385, 0).Rational(37386, 700, 10);
    return exif.MakerNote(note.Bytes()).Jpeg();
}

} // namespace tarn::testing
