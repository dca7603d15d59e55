#include "pictureinfo/CameraDataText.h"

#include "common/codepage.h"
#include "common/dates.h"
#include "common/numbers.h"
#include "common/text.h"

#include <algorithm>
#include <charconv>

namespace tarn {

namespace {

// 1 M begins at a decimal million, but is counted in binary.
std::string SizeText(std::int64_t bytes) {
    const auto size = static_cast<double>(bytes);
    if (bytes < 1000000) return FormatFixed(size / 1024, 0) + " KB";
    return FormatFixed(size / 1024 / 1024, 1) + " MB";
}

std::optional<int> DateNumber(std::string_view text, int start, int length) {
    const std::string_view digits = Trim(MidChars(text, start, length));
    int value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec != std::errc() || result.ptr != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return value;
}

// Of a date text "06/22/2004 8:15:30 PM".
std::optional<std::string> WeekdayOf(std::string_view dateText) {
    const auto month = DateNumber(dateText, 1, 2);
    const auto day = DateNumber(dateText, 4, 2);
    const auto year = DateNumber(dateText, 7, 4);
    if (!month || !day || !year) return std::nullopt;
    return WeekdayName(*year, *month, *day);
}

std::string SecondsText(long long seconds) {
    return FormatPadded(seconds / 60, 2) + "m " + FormatPadded(seconds % 60, 2) + "s";
}

std::string FractionText(long long numerator, long long denominator) {
    if (numerator == 1 && denominator == 1) return SecondsText(1);
    return std::to_string(numerator) + "/" + std::to_string(denominator) + "s";
}

std::string Millimetres(double value) {
    return FormatFixed(value, 1) + "mm";
}

constexpr std::string_view kNoLabel = "              ";
constexpr std::string_view kFilm = "mm (film) - ";

// Control characters are hardly ever there: the look at all bytes is one without a branch, many at
// a time.
void ToOneRow(const std::string& line, std::string& row) {
    const auto isControl = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return static_cast<unsigned char>((byte < ' ') | (byte == 0x7F));
    };
    row = line;
    unsigned char any = 0;
    for (const char c : line) any |= isControl(c);
    if (any == 0) return;
    std::erase(row, '\0');
    std::replace_if(row.begin(), row.end(), isControl, ' ');
}

constexpr std::string_view kFocalLabel = "Focal length: ";

} // namespace

void SetSizeTexts(PictureInfo& info, std::int64_t fileSize) {
    const double pixels = static_cast<double>(info.ImageWidth) * info.ImageHeight;
    const std::string megapixels = FormatFixed(pixels / 1000000, 1);
    info.FileSizeText = SizeText(fileSize);
    const std::string width = std::to_string(info.ImageWidth);
    const std::string height = std::to_string(info.ImageHeight);
    Join(info.CameraDataLines[2], "        Size: ", megapixels, " Megapixel - ", width, " x ",
         height, " - ", info.FileSizeText);
    Join(info.ExpSizeLine, megapixels, " Mp ", width, " x ", height, " - ", info.FileSizeText);
    info.ExpMegapixels = megapixels + " Mp";
    info.MpixelText = info.ExpMegapixels;
}

void SetNameAndFileDate(PictureInfo& info) {
    Join(info.CameraDataLines[0], "   File name: ", info.FileNameOnly);
    const std::string weekday = WeekdayOf(info.FileDate).value_or(std::string());
    Join(info.CameraDataLines[1], "        Date: ", info.FileDate, "  ", weekday);
}

std::optional<std::string> ShownCameraDate(std::string_view bytes) {
    const auto characters = [&](std::size_t at, std::size_t count) {
        return bytes.size() < at ? std::string() : FromCodePage(bytes.substr(at, count));
    };
    const auto time = ParseTimeOfDay(characters(11, 8));
    if (!time) return std::nullopt;
    return characters(5, 2) + "/" + characters(8, 2) + "/" + characters(0, 4) + " " +
           FormatTimeText(*time / 3600, *time / 60 % 60, *time % 60);
}

void SetPictureDateLine(PictureInfo& info) {
    const auto weekday = WeekdayOf(info.PictureDate);
    if (weekday) Join(info.CameraDataLines[1], "Picture date: ", info.PictureDate, "  ", *weekday);
}

void AddOwnFacts(PictureInfo& info, std::string_view cameraDate,
                 const std::vector<std::string>& rows) {
    constexpr std::size_t kDateRow = 1;
    const auto date = ShownCameraDate(cameraDate);
    if (date && info.NoExif && info.PanelRows.size() > kDateRow) {
        info.PictureDate = *date;
        SetPictureDateLine(info);
        info.PanelRows[kDateRow] = info.CameraDataLines[kDateRow];
    }
    info.PanelRows.insert(info.PanelRows.end(), rows.begin(), rows.end());
}

std::string ExposureTimeText(std::int32_t numerator, std::int32_t denominator) {
    const auto rounded = [](double a, double b) { return RoundHalfEven(a / b); };
    if (numerator < denominator) {
        if (numerator <= 1) return FractionText(numerator, denominator);
        return FractionText(1, rounded(denominator, numerator));
    }
    const long long seconds = denominator == 0 ? 0 : rounded(numerator, denominator);
    return seconds >= 1 ? SecondsText(seconds) : std::to_string(seconds);
}

std::string ApertureText(float fNumber) {
    return "f/" + FormatFixed(fNumber, 1);
}

std::string BiasText(float bias) {
    return FormatSigned(bias, 1) + " EV";
}

void SetFocalLength(PictureInfo& info, float focal) {
    std::string& line = info.CameraDataLines[6];
    Join(line, kFocalLabel, Millimetres(focal));
    info.ExpMagnification.clear();
    if (info.FilmFactor <= 0) return;
    info.ExpMagnification = FormatFixed(focal / 50 * info.FilmFactor, 1) + "x";
    line.append(" - ").append(FormatNoLeadingZero(focal * info.FilmFactor, 1));
    line.append(kFilm).append(info.ExpMagnification);
}

void SetFilmFocalLength(PictureInfo& info, std::int16_t filmFocal, float focal) {
    std::string& line = info.CameraDataLines[6];
    if (filmFocal == 0) {
        line = kManualLensLine;
        return;
    }
    info.ExpMagnification = FormatFixed(filmFocal / 50.0, 1) + "x";
    const std::string lens = focal == 0 ? std::string() : Millimetres(focal) + " - ";
    Join(line, kFocalLabel, lens, std::to_string(filmFocal), kFilm, info.ExpMagnification);
}

void SetMeterLine(PictureInfo& info, std::string_view text) {
    Join(info.CameraDataLines[3], "  Meter mode: ", text);
}
void SetFocusLine(PictureInfo& info) {
    Join(info.CameraDataLines[9], "       Focus: ", info.ExpFocus);
}
void SetCameraLine(PictureInfo& info) {
    Join(info.CameraDataLines[12], "      Camera: ", info.CameraName);
}

void SetMakerLines(PictureInfo& info, const std::string& lens,
                   const std::array<std::string, 4>& settings) {
    auto& lines = info.CameraDataLines;
    if (!lens.empty()) Join(lines[7], "        Lens: ", lens);
    Join(lines[8], "    Settings: ", settings[0]);
    for (std::size_t i = 1; i < settings.size(); ++i) Join(lines[8 + i], kNoLabel, settings[i]);
    SetCameraLine(info);
}

void AssembleLines(PictureInfo& info) {
    auto& lines = info.CameraDataLines;
    if (lines[10].empty()) { // no maker note has filled the lines from 8 on
        lines[10] = info.ExpFlash.empty() ? "       Flash: OFF" : "       Flash: ON";
        lines[9].clear();
        if (!info.ExpFocus.empty()) SetFocusLine(info);
        lines[8].clear();
        lines[11].clear();
    }
    lines[4] = "    Exposure: ";
    if (!info.ExpProgram.empty()) lines[4].append(info.ExpProgram).append(" - ");
    lines[4] += info.ExpTime;
    if (!info.ExpAperture.empty()) lines[4].append(" - ").append(info.ExpAperture);
    Join(lines[5], kNoLabel, info.ExpBias);
    if (!info.ExpSpeed.empty()) lines[5].append(" - ").append(info.ExpSpeed);
    if (info.ExpProgram.empty() && info.ExpTime.empty() && info.ExpAperture.empty()) {
        for (const std::size_t line : {4U, 5U, 6U, 10U}) lines[line].clear();
    }
}

void ShowLines(PictureInfo& info, int count) {
    info.PanelRows.resize(static_cast<std::size_t>(count)); // the texts' memory stays in use
    for (std::size_t line = 0; line < info.PanelRows.size(); ++line)
        ToOneRow(info.CameraDataLines[line], info.PanelRows[line]);
}

} // namespace tarn
