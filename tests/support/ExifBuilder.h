// Writes picture files with chosen camera data, byte by byte: a first directory, the Exif directory
// behind it, and the data of both. Offsets count from the header of the data.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarn::testing {

enum class Endian { Little, Big };

// Bytes written one number after the other.
class ByteWriter {
public:
    explicit ByteWriter(Endian endian) : m_endian(endian) {}
    ByteWriter& Word(unsigned value);
    ByteWriter& Long(std::uint32_t value);
    ByteWriter& Raw(std::string_view bytes);
    const std::string& Bytes() const { return m_bytes; }

private:
    Endian m_endian;
    std::string m_bytes;
};

class ExifBuilder {
public:
    explicit ExifBuilder(Endian endian) : m_endian(endian) {}

    // Entries of the first directory until ExifDirectory is called, of the Exif directory from then
    // on, in the order of the calls.
    ExifBuilder& ExifDirectory();
    ExifBuilder& Ascii(unsigned tag, std::string_view text); // with the zero at its end
    ExifBuilder& Short(unsigned tag, unsigned value);
    ExifBuilder& Rational(unsigned tag, std::uint32_t numerator, std::uint32_t denominator);
    ExifBuilder& SignedRational(unsigned tag, std::int32_t numerator, std::int32_t denominator);
    ExifBuilder& Data(unsigned tag, unsigned type, std::uint32_t count, std::string_view bytes);
    ExifBuilder& MakerNote(std::string_view bytes);
    // The directory of what satellites tell: whole degrees, south and west negative, metres, and a
    // time as "2024:05:01 20:10:03". For the first directory.
    ExifBuilder& Satellites(int latitude, int longitude, unsigned height, std::string_view time);
    // An entry as it is; `value` is the whole value field.
    ExifBuilder& Entry(unsigned tag, unsigned type, std::uint32_t count, std::uint32_t value);
    // Whatever is added next has its data at this offset or behind it.
    ExifBuilder& DataFrom(std::uint32_t offset);
    // The offset at which the data of the next entry will stand.
    std::uint32_t NextDataOffset() const { return m_nextData; }

    // The data with their header, as a big-endian file of its own has them.
    std::string Tiff() const;
    std::string Jpeg() const;          // Exif data right behind the start of the file
    std::string JpegJfifFirst() const; // behind a JFIF segment of 18 bytes

private:
    struct Item {
        unsigned tag;
        unsigned type;
        std::uint32_t count;
        std::string value; // the four bytes of the value field
    };
    struct Block {
        std::uint32_t offset;
        std::string bytes;
    };
    std::vector<Item>& Directory() { return m_inExif ? m_exif : m_first; }
    std::string Directory(const std::vector<Item>& items) const;

    Endian m_endian;
    bool m_inExif = false;
    std::vector<Item> m_first;
    std::vector<Item> m_exif;
    std::vector<Block> m_blocks;
    std::uint32_t m_nextData = 700; // behind both directories
};

// A maker note of little-endian words: tag 1 the settings, tag 2 the shot data, both arrays by
// element number; elements not given are 0.
struct CanonNote {
    struct Element {
        int number;
        unsigned value;
    };
    std::vector<Element> settings;
    std::vector<Element> shot;

    // `offset` is where the note will stand. The arrays have 60 words each.
    std::string Bytes(std::uint32_t offset) const;
};

// A big-endian maker note with a header of its own; offsets inside count from that header.
class NikonNote {
public:
    NikonNote& Text(unsigned tag, std::string_view text);
    NikonNote& Value(unsigned tag, unsigned value);
    NikonNote& Rationals(unsigned tag, const std::vector<std::uint32_t>& numbers);
    std::string Bytes() const; // with 31 entries, those not given all zero; more without data

private:
    NikonNote& Add(unsigned tag, unsigned type, unsigned count, std::string_view data);
    std::string m_entries;
    std::string m_data;
    int m_count = 0;
};

// Whole pictures of two cameras, complete with everything that the panel shows.
std::string CanonPicture();
std::string NikonPicture();

} // namespace tarn::testing
