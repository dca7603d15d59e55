#include "blink/MoverStrips.h"

#include "blink/FrameLight.h"
#include "common/numbers.h"
#include "common/paths.h"
#include "sky/planes/FramesOfFiles.h"

#include <algorithm>
#include <map>

namespace tarn {

namespace {

constexpr std::size_t kMostCuts = 12; // of one mover
constexpr std::size_t kMostStrips = 200;
constexpr int kSide = 48;       // pixels of a cut
constexpr int kGap = 2;         // between two
constexpr double kCloser = 1.5; // pixels for one of the file

struct Ground {
    int cell = 1;
    bool bottomUp = false;
    SkyGrid sky;
    SampleCodes codes;
    Stretch stretch;
};

std::vector<MoverSight> SomeOf(const Mover& mover) {
    const std::size_t count = std::min(mover.sights.size(), kMostCuts);
    std::vector<MoverSight> some;
    for (std::size_t i = 0; i < count; ++i)
        some.push_back(mover.sights[i * mover.sights.size() / count]);
    return some;
}

struct Cut {
    std::size_t strip = 0;
    std::size_t place = 0; // in it
    MoverSight sight;
};

void PutCut(const Cut& cut, const FramePlane& frame, const FrameMap& map, const PlaneLevels& levels,
            const Ground& ground, const LightOfCodes& light, QImage& strip) {
    const double middle = 0.5 * (ground.cell - 1);
    const auto [x, y] =
        map((cut.sight.x - middle) / ground.cell, (cut.sight.y - middle) / ground.cell);
    GridView view{kSide, kSide};
    view.step = 1 / (kCloser * ground.cell);
    if (ground.bottomUp) view.mirrorAt = ground.sky.height - 1;
    view.left = x - view.step * (kSide - 1) / 2;
    view.top = (ground.bottomUp ? view.mirrorAt - y : y) - view.step * (kSide - 1) / 2;
    const SeenFrame seen = SeeFrame(frame.samples, map, {&levels, 1}, view);
    for (int row = 0; row < kSide; ++row) {
        unsigned char* to = strip.scanLine(row) + cut.place * std::size_t(kSide + kGap);
        for (int column = 0; column < kSide; ++column)
            to[column] = light(seen.codes[std::size_t(row * kSide + column)]);
    }
}

} // namespace

void CutStrips(FoundMovers& found, const std::atomic<bool>& givenUp) {
    if (found.result.movers.empty() || !found.plan.reference) return;
    std::string error; // a frame that cannot be read any more leaves its cut black
    const auto reference = ReadFramePlane(found.paths[*found.plan.reference], error);
    if (!reference) return;
    Ground ground{reference->cell, reference->bottomUp, SkyOf(reference->samples, 0), {}, {}};
    ground.codes = SampleCodes(ground.sky.level, ground.sky.noise);
    const LightOfCodes light(ground.codes, StretchOfFrame(reference->samples));
    std::map<std::size_t, std::vector<Cut>> ofFrames;
    for (const Mover& mover : found.result.movers) {
        if (found.strips.size() == kMostStrips) break;
        const std::vector<MoverSight> some = SomeOf(mover);
        for (std::size_t i = 0; i < some.size(); ++i)
            ofFrames[some[i].number].push_back({found.strips.size(), i, some[i]});
        QImage strip(int(some.size()) * (kSide + kGap) - kGap, kSide, QImage::Format_Grayscale8);
        strip.fill(0);
        found.strips.push_back(strip);
    }
    for (const SeriesFrame& frame : found.plan.frames) {
        const auto cuts = ofFrames.find(frame.number);
        if (givenUp) return;
        if (cuts == ofFrames.end()) continue;
        const auto plane = ReadFramePlane(found.paths[frame.number], error);
        if (!plane || plane->cell != ground.cell) continue;
        const FrameMap map = InCells(frame.map, ground.cell);
        const PlaneLevels levels{
            frame.light, SurfaceBetween(SkyOf(plane->samples, 0), frame.light, map, ground.sky),
            ground.codes};
        for (const Cut& cut : cuts->second)
            PutCut(cut, *plane, map, levels, ground, light, found.strips[cut.strip]);
    }
}

std::string MoverText(const FoundMovers& found, std::size_t index) {
    const Mover& mover = found.result.movers[index];
    std::string text = "Mover " + std::to_string(index + 1) + ": " + FormatFixed(mover.speed, 1) +
                       " pixels an hour, ";
    if (found.scale) text += FormatFixed(mover.speed * *found.scale, 1) + " arc seconds an hour, ";
    text += "direction " + FormatFixed(mover.angle, 1) + " degrees, signal " +
            FormatFixed(mover.signal, 1) + "\n";
    for (const MoverSight& sight : mover.sights)
        text += LastPart(found.paths[sight.number]) + "  x " + FormatFixed(sight.x, 1) + "  y " +
                FormatFixed(sight.y, 1) + "  flux " + FormatFixed(sight.flux, 0) + "\n";
    return text;
}

} // namespace tarn
