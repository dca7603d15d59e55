#include "pictureinfo/CanonMakerNote.h"

#include "common/codepage.h"
#include "common/text.h"
#include "pictureinfo/CameraDataText.h"
#include "pictureinfo/CameraTables.h"
#include "pictureinfo/Step.h"

#include <span>

namespace tarn {

namespace {

struct NamedValue {
    int value;
    std::string_view name;
};

constexpr NamedValue kContrasts[] = {
    {0, "Normal"}, {1, "High"}, {2, "Highest"}, {65535, "Low"}, {65534, "Lowest"}};

constexpr NamedValue kSharpnesses[] = {
    {0, "Normal"}, {1, "Hard"}, {2, "Hardest"}, {65535, "Soft"}, {65534, "Softest"}};

constexpr NamedValue kQualities[] = {{2, "Normal"}, {3, "Fine"}};

constexpr NamedValue kModes[] = {{0, "Full Auto"},        {1, "Program AE"},
                                 {2, "Shutter Priority"}, {3, "Aperture Priority"},
                                 {4, "Manual"},           {5, "Depth of Field"}};

constexpr NamedValue kFocuses[] = {{0, "One Shot AF"}, {1, "AI Servo AF"}, {2, "AI Focus AF"},
                                   {3, "Manual"},      {4, "Single"},      {5, "Continuous"},
                                   {6, "Manual"}};

constexpr NamedValue kStyles[] = {{129, "Standard"},   {130, "Portrait"},   {131, "Landscape"},
                                  {132, "Neutral"},    {133, "Faitful"},    {134, "Monochrome"},
                                  {33, "User Def. 1"}, {34, "User Def. 2"}, {35, "user Def. 3"}};

constexpr NamedValue kWhiteBalances[] = {{0, "Auto"},     {1, "Daylight"},    {2, "Cloudy"},
                                         {3, "Tungsten"}, {4, "Flourescent"}, {5, "Flash"},
                                         {6, "Custom"},   {8, "Shade"},       {9, "Temperature"}};

// Where the settings stand behind CanonBase.
constexpr int kQualityPlace = 4;
constexpr int kFlashPlace = 6;
constexpr int kFocusPlace = 10;
constexpr int kContrastPlace = 24;
constexpr int kSaturationPlace = 26;
constexpr int kSharpnessPlace = 28;
constexpr int kWhiteBalancePlace = 28;
constexpr int kModePlace = 38;
constexpr int kLongestFocusPlace = 44;
constexpr int kShortestFocusPlace = 46;
constexpr int kRebelStylePlace = 427;
constexpr int kRebelLensPlace = 2623;
constexpr int kRebelLensLength = 21;

constexpr int kNoSetting = 32767;
constexpr int kColumn = 18; // where the second setting of a line begins
constexpr int kStyleColumn = 26;

std::optional<std::int64_t> WordAt(const PictureDataBuffer& data, int index) {
    return data.Word(index, ByteOrder::Intel);
}

int Signed(std::int64_t word) {
    return static_cast<std::int16_t>(word);
}

// The name of a value, empty when it has none; a value out of reach leaves the field as it is.
void SetNameOrEmpty(std::string& field, std::optional<std::int64_t> value,
                    std::span<const NamedValue> names) {
    if (!value) return;
    field.clear();
    for (const NamedValue& named : names) {
        if (named.value == *value) field = named.name;
    }
}

} // namespace

bool CanonMakerNote::Applies(std::string_view cameraName) {
    return IsCanonEos(cameraName);
}

void CanonMakerNote::Read(const NoteSource& source) {
    if (source.order != ByteOrder::Intel) return;
    const PictureDataBuffer& data = source.data;
    const bool rebel = MidChars(source.cameraName, 11, 13) == "DIGITAL REBEL";
    CanonFlash = "OFF";
    CanonLens.clear();
    for (int i = 0; i <= 24; i += 12) {
        ReadEntry(data, source.tag.TagDataIndex + 2 + i);
        if (CanonTag == 1) ReadSettings(data, rebel);
        if (CanonTag == 2) {
            SetNameOrEmpty(CanonWhiteBalance, WordAt(data, CanonBase + kWhiteBalancePlace),
                           kWhiteBalances);
        }
    }
    ComposeLines(rebel);
}

void CanonMakerNote::Show(PictureInfo& info, const ExifTag& /*tag*/) const {
    SetMakerLines(info, CanonLens, CanonLines);
    info.ExpProgram = CanonMode;
    info.ExpFocus = CanonFocus;
    Join(info.ExpFocusShort, ", ", CanonFocus, "-", CanonQuality, "-", CanonSharpness, "-",
         CanonContrast);
}

void CanonMakerNote::ReadEntry(const PictureDataBuffer& data, int index) {
    StoreIfFits(CanonTag, WordAt(data, index));
    StoreIfFits(CanonType, WordAt(data, index + 2));
    StoreIfFits(CanonCount, WordAt(data, index + 4));
    StoreIfFits(CanonValueOffset, WordAt(data, index + 8));
    StoreIfFits(CanonBase, CanonValueOffset - 8);
}

void CanonMakerNote::ReadSettings(const PictureDataBuffer& data, bool rebel) {
    ReadLens(data, rebel);
    if (rebel) {
        ReadRebelSettings(data);
    } else {
        SetNameOrEmpty(CanonContrast, WordAt(data, CanonBase + kContrastPlace), kContrasts);
        SetNameOrEmpty(CanonSaturation, WordAt(data, CanonBase + kSaturationPlace), kContrasts);
        CanonStyle.clear();
    }
    // The word for "set by the picture style" has no name here and so shows nothing.
    SetNameOrEmpty(CanonSharpness, WordAt(data, CanonBase + kSharpnessPlace), kSharpnesses);
    SetNameOrEmpty(CanonQuality, WordAt(data, CanonBase + kQualityPlace), kQualities);
    if (const auto flash = WordAt(data, CanonBase + kFlashPlace)) {
        CanonFlash = *flash == 0 ? "OFF" : "ON";
    }
    SetNameOrEmpty(CanonMode, WordAt(data, CanonBase + kModePlace), kModes);
    SetNameOrEmpty(CanonFocus, WordAt(data, CanonBase + kFocusPlace), kFocuses);
}

void CanonMakerNote::ReadLens(const PictureDataBuffer& data, bool rebel) {
    if (rebel) {
        const auto text = data.Text(CanonBase + kRebelLensPlace, kRebelLensLength);
        CanonLens = FromCodePage(Trim(text));
        return;
    }
    const int minimum = Signed(WordAt(data, CanonBase + kShortestFocusPlace).value_or(0));
    const int maximum = Signed(WordAt(data, CanonBase + kLongestFocusPlace).value_or(0));
    if (minimum <= 0) return;
    CanonLens = std::to_string(minimum) + "-" + std::to_string(maximum) + "mm";
}

void CanonMakerNote::ReadRebelSettings(const PictureDataBuffer& data) {
    if (const auto contrast = WordAt(data, CanonBase + kContrastPlace)) {
        CanonContrast = std::to_string(Signed(*contrast));
    }
    if (const auto saturation = WordAt(data, CanonBase + kSaturationPlace)) {
        CanonSaturation =
            *saturation == kNoSetting ? std::string("B/W") : std::to_string(Signed(*saturation));
    }
    SetNameOrEmpty(CanonStyle, data.Byte(CanonBase + kRebelStylePlace), kStyles);
}

void CanonMakerNote::ComposeLines(bool rebel) {
    const auto compose = [&](std::size_t line, const char* label, const std::string& column,
                             const char* second, const std::string& text) {
        Join(CanonLines[line], label, column);
        PadTo(CanonLines[line], kColumn);
        CanonLines[line].append(second).append(text);
    };
    compose(0, "Quality> ", CanonQuality, rebel ? "         WB> " : "Sharpening> ",
            rebel ? CanonWhiteBalance : CanonSharpness);
    compose(1, "  Focus> ", CanonFocus, rebel ? "   Contrast> " : "  Contrast> ", CanonContrast);
    compose(2, "  Flash> ", CanonFlash, rebel ? " Saturation> " : "Saturation> ", CanonSaturation);
    if (rebel) {
        Join(CanonLines[3], "  Style> ", CanonStyle);
        PadTo(CanonLines[3], kStyleColumn);
    } else {
        Join(CanonLines[3], "                     WB> ", CanonWhiteBalance);
    }
}

} // namespace tarn
