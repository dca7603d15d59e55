#include "imaging/exif/ExifShot.h"

#include "common/numbers.h"
#include "common/text.h"
#include "imaging/exif/Chunks.h"
#include "imaging/exif/ExifPlaces.h"
#include "imaging/exif/FileKind.h"
#include "imaging/exif/JpegHead.h"
#include "imaging/exif/TiffBlock.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace tarn {

namespace {

using namespace std::string_view_literals;

constexpr unsigned kSatellites = 34853; // the directory of what they tell
constexpr std::size_t kMostText = 200;  // bytes

std::string TextOf(const TiffBlock& block, const TiffEntry& entry) {
    std::string text = block.Data(entry, kMostText);
    text.resize(std::min(text.size(), text.find('\0')));
    for (char& sign : text)
        if (sign < ' ' || sign > '~') sign = '?';
    return std::string(Trim(text));
}

// Its fractions; what is divided by 0 is none.
std::vector<double> FractionsOf(const TiffBlock& block, const TiffEntry& entry) {
    constexpr std::size_t kBytes = 8;
    constexpr std::size_t kMost = 3;
    constexpr unsigned kRational = 5;
    std::vector<double> fractions;
    if (entry.type != kRational) return fractions;
    const std::string bytes = block.Data(entry, kMost * kBytes);
    for (std::size_t at = 0; at + kBytes <= bytes.size(); at += kBytes) {
        const auto over = double(NumberAt(bytes, at, 4, block.HighFirst()));
        const auto under = double(NumberAt(bytes, at + 4, 4, block.HighFirst()));
        if (under == 0) return {};
        fractions.push_back(over / under);
    }
    return fractions;
}

// Degrees, minutes and seconds, or the first of them alone.
std::optional<double> AngleOf(const std::vector<double>& parts) {
    if (parts.empty()) return std::nullopt;
    double angle = parts[0];
    if (parts.size() > 1) angle += parts[1] / 60;
    if (parts.size() > 2) angle += parts[2] / 3600;
    return angle;
}

void TakeSatellites(const TiffBlock& block, std::int64_t directory, ExifShot& shot) {
    std::string north;
    std::string east;
    bool isBelowSea = false;
    std::string day;
    std::vector<double> time;
    for (const TiffEntry& entry : block.Directory(directory)) switch (entry.tag) {
        case 1:
            north = TextOf(block, entry);
            break;
        case 2:
            shot.latitude = AngleOf(FractionsOf(block, entry));
            break;
        case 3:
            east = TextOf(block, entry);
            break;
        case 4:
            shot.longitude = AngleOf(FractionsOf(block, entry));
            break;
        case 5:
            isBelowSea = entry.value.starts_with('\x01');
            break;
        case 6:
            shot.height = AngleOf(FractionsOf(block, entry));
            break;
        case 7:
            time = FractionsOf(block, entry);
            break;
        case 29:
            day = TextOf(block, entry);
            break;
        default:
            break;
        }
    if (shot.latitude && north.starts_with('S')) shot.latitude = -*shot.latitude;
    if (shot.longitude && east.starts_with('W')) shot.longitude = -*shot.longitude;
    if (shot.height && isBelowSea) shot.height = -*shot.height;
    if (day.size() != 10 || time.size() != 3) return;
    day[4] = day[7] = '-';
    shot.satelliteTime = day;
    for (std::size_t i = 0; i < time.size(); ++i)
        shot.satelliteTime +=
            (i == 0 ? "T" : ":") + FormatPadded(std::llround(std::floor(time[i])), 2);
}

void TakeExif(const TiffBlock& block, std::int64_t directory, ExifShot& shot) {
    for (const TiffEntry& entry : block.Directory(directory)) switch (entry.tag) {
        case 0x829A:
            if (const auto parts = FractionsOf(block, entry); !parts.empty())
                shot.exposure = parts[0];
            break;
        case 0x9003:
            shot.date = TextOf(block, entry);
            break;
        case 0x9011:
            shot.zone = TextOf(block, entry);
            break;
        case 0x9010: // of the file's date
            if (shot.zone.empty()) shot.zone = TextOf(block, entry);
            break;
        case 0xA434:
            shot.lens = TextOf(block, entry);
            break;
        case 0x9291:
            shot.fraction = TextOf(block, entry);
            break;
        default:
            break;
        }
}

ExifPlaces PlacesOf(const FileBytes& file) {
    const std::string start = file.At(0, kKindBytes);
    if (start.starts_with("\xFF\xD8"))
        return {FindJpegSegment(file, 2, '\xE1', "Exif\0\0"sv), {}, {}};
    if (start.starts_with("II") || start.starts_with("MM")) return {WholeOf(file), {}, {}};
    return FindExif(file, start);
}

} // namespace

std::optional<ExifShot> ReadExifShot(const FileBytes& file) {
    constexpr unsigned kModel = 272;
    const ExifPlaces places = PlacesOf(file);
    if (places.first.length <= 0) return std::nullopt;
    ExifShot shot;
    const TiffBlock first(file, places.first);
    for (const TiffEntry& entry : first.Directory(first.FirstDirectory())) {
        if (entry.tag == kModel) shot.camera = TextOf(first, entry);
        if (entry.tag == kExifDirectory) TakeExif(first, first.OffsetOf(entry), shot);
        if (entry.tag == kSatellites) TakeSatellites(first, first.OffsetOf(entry), shot);
    }
    if (places.exif.length > 0) {
        const TiffBlock exif(file, places.exif);
        TakeExif(exif, exif.FirstDirectory(), shot);
    }
    if (places.satellites.length > 0) {
        const TiffBlock satellites(file, places.satellites);
        TakeSatellites(satellites, satellites.FirstDirectory(), shot);
    }
    return shot;
}

} // namespace tarn
