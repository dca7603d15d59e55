#include "sky/report/Nights.h"

#include "sky/place/ExposureTime.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tarn {

namespace {

constexpr double kDay = 86400;
constexpr double kHour = 3600;

// Noons of the place, counted from 1970, up to the frame.
double NightOf(const ReportFrame& frame, double zoneHours) {
    const double hours = frame.sky.site ? frame.sky.site->longitude / 15
                                        : frame.header.where.time.zoneHours.value_or(zoneHours);
    return std::floor((*frame.sky.utc + hours * kHour - kDay / 2) / kDay);
}

SunTimes SunTimesOf(double noon, const Site& site) {
    constexpr double kStep = 300;
    constexpr double kUpperEdge = -0.833;
    constexpr double kNight = -18;
    SunTimes times;
    Heavens heavens;
    double before = heavens.At(noon, site).sun.altitude;
    for (double at = noon; at < noon + kDay; at += kStep) {
        const double after = heavens.At(at + kStep, site).sun.altitude;
        const auto crossing = [&](double altitude, std::optional<double>& down,
                                  std::optional<double>& up) {
            const double when = at + kStep * (altitude - before) / (after - before);
            if (before > altitude && after <= altitude && !down) down = when;
            if (before <= altitude && after > altitude) up = when;
        };
        crossing(kUpperEdge, times.sunset, times.sunrise);
        crossing(kNight, times.dusk, times.dawn);
        before = after;
    }
    return times;
}

bool IsLight(const ReportFrame& frame) {
    return frame.header.kind == FrameKind::Light;
}

void FindGaps(std::span<const ReportFrame> frames, ReportNight& night) {
    std::optional<double> end;
    for (const std::size_t index : night.frames) {
        const ReportFrame& frame = frames[index];
        if (!IsLight(frame) || !frame.sky.start) continue;
        if (end && *frame.sky.start - *end > kGap) night.gaps.push_back({*end, *frame.sky.start});
        end = std::max(end.value_or(*frame.sky.start), *frame.sky.start + frame.Seconds());
    }
}

void FindBest(std::span<const ReportFrame> frames, ReportNight& night) {
    std::vector<std::size_t> scored;
    for (const std::size_t index : night.frames)
        if (IsLight(frames[index]) && std::isfinite(frames[index].score)) scored.push_back(index);
    if (scored.size() < 2) return;
    const auto isLess = [&](std::size_t one, std::size_t other) {
        return frames[one].score < frames[other].score;
    };
    night.best = *std::max_element(scored.begin(), scored.end(), isLess);
    night.worst = *std::min_element(scored.begin(), scored.end(), isLess);
}

} // namespace

std::vector<ReportNight> NightsOf(std::span<const ReportFrame> frames, double zoneHours) {
    std::map<double, ReportNight> byNoon;
    const auto each = [&](bool lights, const auto& take) {
        for (std::size_t i = 0; i < frames.size(); ++i)
            if (frames[i].IsRead() && frames[i].sky.utc && IsLight(frames[i]) == lights)
                take(i, NightOf(frames[i], zoneHours));
    };
    each(true, [&](std::size_t index, double day) { byNoon[day].frames.push_back(index); });
    each(false, [&](std::size_t index, double day) {
        for (const double noon : {day, day - 1})
            if (const auto night = byNoon.find(noon); night != byNoon.end())
                return night->second.frames.push_back(index);
    });
    std::vector<ReportNight> nights;
    for (auto& [day, night] : byNoon) {
        std::stable_sort(
            night.frames.begin(), night.frames.end(), [&](std::size_t one, std::size_t other) {
                return frames[one].sky.utc.value_or(0) < frames[other].sky.utc.value_or(0);
            });
        night.date = UtcText(day * kDay).substr(0, 10);
        for (const std::size_t index : night.frames)
            if (!night.site) night.site = frames[index].sky.site;
        const ReportFrame& first = frames[night.frames.front()];
        const double hours = night.site ? night.site->longitude / 15
                                        : first.header.where.time.zoneHours.value_or(zoneHours);
        night.noon = day * kDay + kDay / 2 - hours * kHour;
        if (night.site) night.sun = SunTimesOf(night.noon, *night.site);
        FindGaps(frames, night);
        FindBest(frames, night);
        nights.push_back(std::move(night));
    }
    return nights;
}

} // namespace tarn
