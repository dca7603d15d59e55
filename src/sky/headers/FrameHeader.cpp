#include "sky/headers/FrameHeader.h"

#include "common/numbers.h"
#include "imaging/exif/ExifShot.h"
#include "imaging/fits/FitsLines.h"
#include "imaging/fits/SkyFile.h"
#include "platform/OpenRegular.h"

#include <cmath>

namespace tarn {

namespace {

std::string ExposureText(const ExposureTime& time) {
    return time.exposure ? ShortestSingle(float(*time.exposure)) : std::string();
}

// Some write that of a sensor from absolute zero on.
std::string CelsiusText(const std::string& written) {
    constexpr double kBoiling = 100;
    constexpr double kIce = 273.15;
    const double degrees = ParseNumber(written).value_or(0);
    return degrees > kBoiling ? PlainNumber(FormatFixed(degrees - kIce, 2)) : PlainNumber(written);
}

FrameHeader HeaderOf(const FitsHeader& fits) {
    FrameHeader header;
    header.kind = KindOf(fits.imageType);
    header.where = WhereOf(fits.words, header.kind == FrameKind::Light);
    header.object = fits.object;
    header.filter = fits.filter;
    header.camera = fits.camera;
    header.telescope = fits.telescope;
    header.exposure = ExposureText(header.where.time);
    header.gain = PlainNumber(fits.gain);
    header.temperature = CelsiusText(fits.temperature);
    header.focus = PlainNumber(fits.focus);
    header.focalLength = PlainNumber(fits.focalLength);
    return header;
}

FrameHeader HeaderOf(const ExifShot& shot, std::optional<int> zoneMinutes) {
    FrameHeader header;
    header.camera = shot.camera;
    header.lens = shot.lens;
    const CameraTime camera{shot.date, shot.fraction, shot.zone, shot.exposure,
                            ParseUtc(shot.satelliteTime)};
    FrameWhere& where = header.where;
    where.hasTarget = false;
    where.time = ExposureTimeOf(camera, zoneMinutes);
    header.exposure = ExposureText(where.time);
    if (!shot.latitude || !shot.longitude) return header;
    const Site site{*shot.latitude, *shot.longitude, shot.height.value_or(0)};
    where.isSiteSure = true;
    if (site.latitude == 0 && site.longitude == 0)
        where.faults.emplace_back("the site 0, 0 is none");
    else if (std::abs(site.latitude) > 90 || std::abs(site.longitude) > 180)
        where.faults.emplace_back("the site is out of range");
    else
        where.site = site;
    return header;
}

} // namespace

FrameHeader ReadFrameHeader(const std::string& path, std::optional<int> zoneMinutes) {
    FrameHeader header;
    const OpenFile file(path, header.fault);
    if (!file) return header;
    const FileBytes bytes(file.Number());
    const std::string start = bytes.At(0, kFitsStart.size());
    if (const auto shot = start.starts_with("\xFF\xD8") ? ReadExifShot(bytes) : std::nullopt)
        return HeaderOf(*shot, zoneMinutes);
    if (IsSkyFile(path)) {
        if (const auto fits = ReadSkyHeader(path, header.fault)) return HeaderOf(*fits);
        return header;
    }
    if (const auto shot = ReadExifShot(bytes)) return HeaderOf(*shot, zoneMinutes);
    header.fault = "its header says nothing of the exposure";
    return header;
}

} // namespace tarn
