#include "pictureinfo/ExifTag.h"

#include "pictureinfo/Step.h"

namespace tarn {

namespace {

struct BytePair {
    int high;
    int low;
};

// Where the bytes of an entry, and of a signed rational's data, stand in the two byte orders.
struct EntryLayout {
    BytePair number;
    int type;
    BytePair count;
    BytePair dataOffset;
    BytePair value;
    BytePair numerator;
    int sign;
    BytePair denominator;
};

constexpr EntryLayout kIntelLayout = {{1, 0}, 2, {5, 4}, {9, 8}, {9, 8}, {1, 0}, 1, {5, 4}};
constexpr EntryLayout kMotorolaLayout = {{0, 1}, 3, {6, 7}, {10, 11}, {8, 9}, {2, 3}, 0, {6, 7}};

const EntryLayout& LayoutOf(ByteOrder order) {
    return order == ByteOrder::Intel ? kIntelLayout : kMotorolaLayout;
}

std::optional<std::int64_t> PairAt(const PictureDataBuffer& data, int index, BytePair pair) {
    return data.Pair(index + pair.high, index + pair.low);
}

// Offsets count from the data's header, ten bytes in front of the buffer.
constexpr int kOffsetOfBuffer = 10;

// Compiled for each layout: this is the innermost work of a pass over whole folders.
template <const EntryLayout& layout> void ReadFields(ExifTag& tag, const PictureDataBuffer& data) {
    StoreIfFits(tag.TagNumber, PairAt(data, tag.TagIndex, layout.number));
    StoreIfFits(tag.TagType, data.Byte(tag.TagIndex + layout.type));
    StoreIfFits(tag.TagCount, PairAt(data, tag.TagIndex, layout.count));
    StoreIfFits(tag.TagDataIndex, PairAt(data, tag.TagIndex, layout.dataOffset));
    StoreIfFits(tag.TagDataIndex, tag.TagDataIndex - kOffsetOfBuffer); // the old one if that failed
    StoreIfFits(tag.TagValue, PairAt(data, tag.TagIndex, layout.value));
}

} // namespace

void ExifTag::Read(const PictureDataBuffer& data, ByteOrder order) {
    if (TagNumber == kExifDirectoryTag) StoreIfFits(TagIndex, TagDataIndex + 2);
    if (order == ByteOrder::Intel) {
        ReadFields<kIntelLayout>(*this, data);
    } else {
        ReadFields<kMotorolaLayout>(*this, data);
    }
    if (TagType == 2) ReadText(data);
    if (TagType == 5) ReadUnsignedRational(data, order);
    if (TagType == 10) ReadSignedRational(data, order);
}

void ExifTag::ReadText(const PictureDataBuffer& data) {
    TagText = data.Text(TagDataIndex, TagCount - 1); // without the zero at its end
}

void ExifTag::ReadUnsignedRational(const PictureDataBuffer& data, ByteOrder order) {
    StoreIfFits(TagNumerator, data.Long(TagDataIndex, order));
    StoreIfFits(TagDenominator, data.Long(TagDataIndex + 4, order));
    Divide();
}

void ExifTag::ReadSignedRational(const PictureDataBuffer& data, ByteOrder order) {
    const EntryLayout& layout = LayoutOf(order);
    StoreIfFits(TagNumerator, PairAt(data, TagDataIndex, layout.numerator));
    // A sign out of reach counts as minus: a test that fails is a test passed.
    if (data.Byte(TagDataIndex + layout.sign).value_or(0xFF) == 0xFF) MakeNumeratorNegative();
    StoreIfFits(TagDenominator, PairAt(data, TagDataIndex, layout.denominator));
    Divide();
}

void ExifTag::MakeNumeratorNegative() {
    StoreIfFits(TagNumerator, -(static_cast<std::int64_t>(TagNumerator ^ 0xFFFF) + 1));
}

void ExifTag::Divide() {
    // Through 0 this gives infinity or not-a-number, which the texts show as such.
    TagRational = static_cast<float>(static_cast<double>(TagNumerator) / TagDenominator);
}

} // namespace tarn
