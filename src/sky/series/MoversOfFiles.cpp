#include "sky/series/MoversOfFiles.h"

#include "sky/headers/FrameHeader.h"
#include "sky/planes/FramesOfFiles.h"

#include <cmath>

namespace tarn {

namespace {

// From samples, which are cells of a mosaic, to pixels.
void InPixels(MoversResult& result, int cell) {
    const double middle = 0.5 * (cell - 1);
    for (Mover& mover : result.movers) {
        mover.speed *= cell;
        for (MoverSight& sight : mover.sights) {
            sight.x = sight.x * cell + middle;
            sight.y = sight.y * cell + middle;
        }
    }
}

} // namespace

MoversResult FindMoversInFiles(const MoversQuest& quest, const std::string& scratch,
                               const SeriesWatch& watch) {
    MoversResult told;
    told.faults = quest.plan.faults;
    if (!quest.plan.reference) {
        told.fault = "no frame has stars to align by";
        return told;
    }
    const auto reference = ReadFramePlane(quest.paths[*quest.plan.reference], told.fault);
    if (!reference) return told;
    const int cell = reference->cell;
    std::vector<MoversFrame> frames;
    for (const SeriesFrame& frame : quest.plan.frames) {
        const ExposureTime exposed = ReadFrameHeader(quest.paths[frame.number], {}).where.time;
        if (!exposed.middle || !std::isfinite(*exposed.middle)) {
            told.faults[frame.number] = "no time of exposure";
            continue;
        }
        SeriesFrame samples = frame;
        samples.map = InCells(frame.map, cell);
        frames.push_back({samples, *exposed.middle, quest.measures[frame.number].fwhm / cell,
                          exposed.exposure.value_or(0)});
    }
    const auto read = [&](std::size_t number, std::string& error) -> std::optional<FrameSamples> {
        auto plane = ReadFramePlane(quest.paths[number], error);
        if (!plane) return std::nullopt;
        if (plane->cell == cell) return std::move(plane->samples);
        error = "another kind of sensor";
        return std::nullopt;
    };
    MoversOrder order;
    order.scratch = scratch;
    order.watch = watch;
    order.cell = cell;
    MoversResult found = FindMovers(frames, *quest.plan.reference, read, order);
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (!found.faults[i].empty()) told.faults[frames[i].frame.number] = found.faults[i];
    found.faults = std::move(told.faults);
    InPixels(found, cell);
    return found;
}

} // namespace tarn
