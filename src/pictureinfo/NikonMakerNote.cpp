#include "pictureinfo/NikonMakerNote.h"

#include "common/codepage.h"
#include "common/numbers.h"
#include "common/text.h"
#include "pictureinfo/CameraDataText.h"
#include "pictureinfo/Step.h"

namespace tarn {

namespace {

// The note has ten bytes of its own, a header of eight and a count of two in front of its entries;
// its offsets count from that header.
constexpr int kHeaderPlace = 10;
constexpr int kEntriesPlace = 20;
constexpr int kEntries = 31;
constexpr int kEntrySize = 12;

constexpr int kColumn = 18; // width of a setting in a line
constexpr std::string_view kNoFlash = "OFF";

std::optional<std::int64_t> WordAt(const PictureDataBuffer& data, int index) {
    return data.Word(index, ByteOrder::Motorola);
}

struct LensNumber {
    double value;
    std::string text;
};

LensNumber SingleNumber(double number) {
    const auto single = static_cast<float>(number);
    return {single, ShortestSingle(single)};
}

LensNumber FocalLength(double number, ByteOrder order) {
    if (order == ByteOrder::Motorola) return SingleNumber(number);
    const long long whole = RoundHalfEven(number);
    return {static_cast<double>(whole), std::to_string(whole)};
}

struct TextTag {
    std::int16_t tag;
    std::string NikonMakerNote::*field;
};

constexpr std::int16_t kSensitivityTag = 2;
constexpr std::int16_t kFlashTag = 8;
constexpr std::int16_t kLensTag = 132;
constexpr TextTag kTextTags[] = {
    {4, &NikonMakerNote::NikonQuality},       {5, &NikonMakerNote::NikonWhiteBalance},
    {6, &NikonMakerNote::NikonSharpening},    {7, &NikonMakerNote::NikonFocus},
    {kFlashTag, &NikonMakerNote::NikonFlash}, {129, &NikonMakerNote::NikonTone}};

} // namespace

bool NikonMakerNote::Applies(std::string_view cameraName) {
    return StartsWith(cameraName, "NIKON D");
}

void NikonMakerNote::Read(const NoteSource& source) {
    const PictureDataBuffer& data = source.data;
    // The last text of each tag holds; turning it into a field once keeps a note of long texts
    // cheap.
    std::array<std::optional<std::string_view>, std::size(kTextTags)> texts;
    NikonFlash = kNoFlash;
    NikonLens.clear();
    for (int i = 0; i < kEntries; ++i) {
        ReadEntry(data, source.tag.TagDataIndex, kEntriesPlace + i * kEntrySize);
        if (NikonTag == kSensitivityTag) source.tag.TagValue = NikonValue;
        if (NikonTag == kLensTag) ReadLens(data, source.order);
        for (std::size_t row = 0; row < texts.size(); ++row) {
            if (NikonTag != kTextTags[row].tag) continue;
            const bool noFlash = NikonTag == kFlashTag && !source.flashFired;
            const auto text = noFlash ? kNoFlash : ReadText(data);
            if (text) texts[row] = text;
        }
    }
    for (std::size_t row = 0; row < texts.size(); ++row) {
        if (texts[row]) this->*kTextTags[row].field = FromCodePage(*texts[row]);
    }
    ComposeLines();
}

void NikonMakerNote::Show(PictureInfo& info, const ExifTag& tag) const {
    info.ExpSpeed = std::to_string(tag.TagValue) + " ISO";
    SetMakerLines(info, NikonLens, NikonLines);
    info.ExpFocus = NikonFocus;
    info.ExpFocusShort =
        ", " + NikonFocus + "-" + NikonQuality + "-" + NikonSharpening + "-" + NikonTone;
}

void NikonMakerNote::ReadEntry(const PictureDataBuffer& data, int noteIndex, int place) {
    const int index = noteIndex + place;
    StoreIfFits(NikonTag, WordAt(data, index));
    StoreIfFits(NikonType, WordAt(data, index + 2));
    StoreIfFits(NikonCount, WordAt(data, index + 6));
    StoreIfFits(NikonValue, WordAt(data, index + 10));
    StoreIfFits(NikonDataIndex, NikonValue + noteIndex + kHeaderPlace);
}

std::optional<std::string_view> NikonMakerNote::ReadText(const PictureDataBuffer& data) const {
    const int length = NikonCount - 1; // without the zero at its end
    const std::string_view text = data.Text(NikonDataIndex, length);
    if (length > 0 && text.empty()) return std::nullopt; // wholly out of reach
    return Trim(text);
}

void NikonMakerNote::ReadLens(const PictureDataBuffer& data, ByteOrder order) {
    const LensNumber shortest = FocalLength(ReadLensNumber(data, 0), order);
    const LensNumber longest = FocalLength(ReadLensNumber(data, 1), order);
    const LensNumber atShortest = SingleNumber(ReadLensNumber(data, 2));
    const LensNumber atLongest = SingleNumber(ReadLensNumber(data, 3));
    if (shortest.value == 0) {
        NikonLens.clear();
    } else if (shortest.value == longest.value) {
        NikonLens = shortest.text + "mm f/" + atShortest.text;
    } else {
        NikonLens =
            shortest.text + "-" + longest.text + "mm f/" + atShortest.text + "-" + atLongest.text;
    }
}

double NikonMakerNote::ReadLensNumber(const PictureDataBuffer& data, int which) {
    const int index = NikonDataIndex + which * 8;
    const auto numerator = data.Long(index, ByteOrder::Motorola);
    const auto denominator = data.Long(index + 4, ByteOrder::Motorola);
    Fraction& number = m_lensNumbers[static_cast<std::size_t>(which)];
    StoreIfFits(number.numerator, numerator);
    StoreIfFits(number.denominator, denominator);
    if (number.denominator == 0) return 0;
    return static_cast<double>(number.numerator) / number.denominator;
}

void NikonMakerNote::ComposeLines() {
    NikonLines = {pad("Quality> " + NikonQuality, kColumn) + "Sharpening> " + NikonSharpening,
                  pad("  Focus> " + NikonFocus, kColumn) + "      Tone> " + NikonTone,
                  pad("  Flash> " + NikonFlash, kColumn),
                  pad("     WB> " + NikonWhiteBalance, kColumn)};
}

} // namespace tarn
