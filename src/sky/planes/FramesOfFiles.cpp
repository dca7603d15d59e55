#include "sky/planes/FramesOfFiles.h"

#include "common/numbers.h"
#include "sky/planes/PictureValues.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace tarn {

namespace {

FrameSamples PlaneOf(const std::shared_ptr<const PictureValues>& values) {
    FrameSamples frame;
    frame.width = values->plane.width;
    frame.height = values->plane.height;
    frame.words = values->plane.words;
    frame.floats = values->plane.floats;
    frame.zero = values->plane.zero;
    frame.scale = values->plane.scale;
    frame.kept = values;
    return frame;
}

// Seconds east of UTC of what stands behind a time of day: "Z", "-0700", "+02:00"; 0 for others.
double ZoneOf(const std::string& zone) {
    int hours = 0;
    int minutes = 0;
    if (zone.empty() || (zone[0] != '+' && zone[0] != '-')) return 0;
    const char* form = zone.find(':') == std::string::npos ? "%2d%2d" : "%2d:%2d";
    if (std::sscanf(zone.c_str() + 1, form, &hours, &minutes) < 1) return 0;
    return (zone[0] == '-' ? -1 : 1) * (3600.0 * hours + 60.0 * minutes);
}

} // namespace

std::optional<FrameSamples> ReadFrameColours(const std::string& path, std::string& error) {
    auto read = ReadPictureColours(path, error);
    if (!read) return std::nullopt;
    const auto values = std::make_shared<const PictureValues>(std::move(*read));
    FrameSamples frame = PlaneOf(values);
    const FitsHeader& header = values->samples.header;
    if (header.width == 0) return frame; // no sensor's
    frame.planes = header.planes;
    frame.mosaic = header.mosaic;
    frame.colours = header.pattern;
    return frame;
}

std::optional<FramePlane> ReadFramePlane(const std::string& path, std::string& error) {
    auto read = ReadPictureValues(path, error);
    if (!read) return std::nullopt;
    const int cell = read->plane.cell;
    const auto values = std::make_shared<const PictureValues>(std::move(*read));
    return FramePlane{PlaneOf(values), cell};
}

FrameMap InCells(const FrameMap& map, int cell) {
    const double middle = 0.5 * (cell - 1); // of a cell, from its first pixel
    const auto [x, y] = map(middle, middle);
    FrameMap cells = map;
    cells.c = (x - middle) / cell;
    cells.f = (y - middle) / cell;
    return cells;
}

double SecondsOf(const std::string& exposure) {
    constexpr double kMost = 86400;
    const double seconds = ParseNumber(exposure).value_or(0);
    return seconds > 0 && seconds <= kMost ? seconds : 0;
}

std::optional<double> MiddleOfExposure(const std::string& start, const std::string& seconds) {
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    int hour = 0;
    int minute = 0;
    double second = 0;
    int end = 0;
    if (std::sscanf(start.c_str(), "%4d-%2u-%2u%*1[T ]%2d:%2d:%lf%n", &year, &month, &day, &hour,
                    &minute, &second, &end) != 6)
        return std::nullopt;
    using namespace std::chrono;
    const year_month_day date{std::chrono::year(year), std::chrono::month(month),
                              std::chrono::day(day)};
    if (!date.ok()) return std::nullopt;
    const double midnight = 86400.0 * sys_days(date).time_since_epoch().count();
    return midnight + 3600.0 * hour + 60.0 * minute + second + SecondsOf(seconds) / 2 -
           ZoneOf(start.substr(std::size_t(end)));
}

} // namespace tarn
