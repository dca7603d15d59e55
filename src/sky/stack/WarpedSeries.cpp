#include "sky/stack/WarpedSeries.h"

#include "common/worker.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr int kTile = 128; // grid samples along a row
constexpr int kStrip = 64; // rows at a time
constexpr char kNoRoom[] = "the disk has no room for the frames that are laid over each other";

// One strip of a frame: from tiles of values to rows of codes.
class Strip {
public:
    Strip(int width, int colours)
        : m_width(width), m_colours(colours),
          m_tile(std::size_t(kTile) * kStrip * std::size_t(colours)),
          m_codes(std::size_t(width) * kStrip * std::size_t(colours)) {}

    float* Tile() { return m_tile.data(); }
    // Levels the tile and codes it.
    void Put(const GridPart& part, int colour, double light, const LevelSurface& surface,
             const SampleCodes& codes) {
        for (int y = 0; y < part.height; ++y) {
            float* values = m_tile.data() + std::size_t(colour) * part.Samples() +
                            std::size_t(y) * std::size_t(part.width);
            surface.AddRow(part.top + y, part.left, part.width, float(light), values);
            std::int16_t* to = Row(colour, y) + part.left;
            for (int x = 0; x < part.width; ++x) to[x] = codes.CodeOf(values[x]);
        }
    }
    std::int16_t* Row(int colour, int y) {
        return m_codes.data() +
               (std::size_t(colour) * kStrip + std::size_t(y)) * std::size_t(m_width);
    }

private:
    int m_width;
    int m_colours;
    std::vector<float> m_tile;
    std::vector<std::int16_t> m_codes;
};

// Adds a strip's samples to a shrunk frame: sums and, behind them, counts.
void Shrink(Strip& strip, int colour, const SampleCodes& codes, int top, int rows, int gridWidth,
            int shrink, const PartialSum& sum, std::vector<float>& shrunk) {
    const std::size_t all = sum.values.size();
    for (int y = 0; y < rows; ++y) {
        const int down = (top + y) / shrink;
        if (down >= sum.height) return;
        const std::size_t at = (std::size_t(colour) * std::size_t(sum.height) + std::size_t(down)) *
                               std::size_t(sum.width);
        const std::int16_t* row = strip.Row(colour, y);
        for (int x = 0; x < std::min(gridWidth, sum.width * shrink); ++x) {
            if (row[x] == kNoSample) continue;
            const std::size_t to = at + std::size_t(x / shrink);
            shrunk[to] += codes.Sky() + codes.Unit() * SampleCodes::Deviations(row[x]);
            shrunk[all + to] += 1;
        }
    }
}

} // namespace

std::string WarpedSeries::SetReference(std::size_t number) {
    std::string error;
    const auto frame = m_read(number, error);
    if (!frame) return error.empty() ? "cannot be read" : error;
    m_width = frame->width;
    m_height = frame->height;
    m_skies.clear();
    m_codes.clear();
    for (int colour = 0; colour < frame->Colours(); ++colour) {
        m_skies.push_back(SkyOf(*frame, colour));
        m_codes.emplace_back(m_skies.back().level, m_skies.back().noise);
    }
    return {};
}

std::size_t WarpedSeries::RowAt(std::size_t frame, int colour, int row) const {
    return ((frame * m_skies.size() + std::size_t(colour)) * std::size_t(m_height) +
            std::size_t(row)) *
           std::size_t(m_width) * sizeof(std::int16_t);
}

bool WarpedSeries::Read(std::size_t frame, int colour, int row, int rows, std::int16_t* to) const {
    return m_scratch->Read(RowAt(frame, colour, row), to,
                           std::size_t(rows) * std::size_t(m_width) * sizeof(std::int16_t));
}

bool WarpedSeries::ReadRun(std::size_t frame, int colour, int x, int y, int count,
                           std::int16_t* to) const {
    return m_scratch->Read(RowAt(frame, colour, y) + std::size_t(x) * sizeof(std::int16_t), to,
                           std::size_t(count) * sizeof(std::int16_t));
}

// It may have become another since it was measured.
std::string WarpedSeries::FaultOf(const FrameSamples& samples) const {
    if (samples.Colours() != Colours())
        return std::to_string(samples.Colours()) + " colours where the reference has " +
               std::to_string(Colours());
    if (samples.width != m_width || samples.height != m_height)
        return "another size: " + std::to_string(samples.width) + " x " +
               std::to_string(samples.height);
    return {};
}

std::string WarpedSeries::Take(const SeriesFrame& frame, std::size_t place,
                               const SeriesWatch& watch) {
    std::string error;
    const auto samples = m_read(frame.number, error);
    if (!samples) return error.empty() ? "cannot be read" : error;
    if (std::string fault = FaultOf(*samples); !fault.empty()) return fault;
    std::vector<LevelSurface> surfaces;
    for (int colour = 0; colour < Colours(); ++colour) {
        const SkyGrid& reference = m_skies[std::size_t(colour)];
        const SkyGrid sky = SkyOf(*samples, colour);
        surfaces.push_back(SurfaceBetween(sky, frame.light, frame.map, reference));
        m_noises[place * m_skies.size() + std::size_t(colour)] =
            sky.noise * frame.light / double(m_codes[std::size_t(colour)].Unit());
    }
    Warp warp(*samples, frame.map);
    Strip strip(m_width, Colours());
    std::vector<float> shrunk(watch.shrink > 0 ? 2 * m_sum.values.size() : 0);
    for (int top = 0; top < m_height; top += kStrip) {
        if (watch.IsCancelled() || m_diskErrs) return {};
        const int rows = std::min(kStrip, m_height - top);
        for (int left = 0; left < m_width; left += kTile) {
            const GridPart part{left, top, std::min(kTile, m_width - left), rows};
            warp.Take(part, strip.Tile());
            for (int colour = 0; colour < Colours(); ++colour)
                strip.Put(part, colour, frame.light, surfaces[std::size_t(colour)], Codes(colour));
        }
        for (int colour = 0; colour < Colours(); ++colour) {
            if (!m_scratch->Write(RowAt(place, colour, top), strip.Row(colour, 0),
                                  std::size_t(rows) * std::size_t(m_width) *
                                      sizeof(std::int16_t))) {
                m_diskErrs = true;
                return {};
            }
            if (!shrunk.empty())
                Shrink(strip, colour, Codes(colour), top, rows, m_width, watch.shrink, m_sum,
                       shrunk);
        }
    }
    AddToSum(watch, shrunk);
    return {};
}

void WarpedSeries::AddToSum(const SeriesWatch& watch, const std::vector<float>& shrunk) {
    const std::lock_guard lock(m_mutex);
    ++m_done;
    const std::size_t all = shrunk.size() / 2;
    for (std::size_t i = 0; i < all; ++i) {
        const float part = shrunk[all + i];
        if (part == 0) continue;
        const std::size_t place = i % m_sum.frames.size();
        float& count = m_sum.frames[place];
        // All colours of a place have their values alike; the first raises the count.
        if (i < m_sum.frames.size()) count += 1;
        m_sum.values[i] += (shrunk[i] / part - m_sum.values[i]) / std::max(1.0F, count);
    }
    if (watch.told) watch.told(m_done, m_sum);
}

bool WarpedSeries::OpenScratch(std::size_t frames) {
    m_diskErrs = false;
    m_fault.clear();
    if (!m_scratch) m_scratch = std::make_unique<Scratch>(m_folder);
    if (!m_scratch->IsOpen())
        m_fault = "nothing can be written in " + m_folder;
    else if (!m_scratch->HasRoomFor(RowAt(frames, 0, 0)))
        m_fault = kNoRoom;
    return m_fault.empty();
}

bool WarpedSeries::Make(std::span<const SeriesFrame> frames, const SeriesWatch& watch,
                        std::vector<std::string>& faults) {
    faults.assign(frames.size(), {});
    m_noises.assign(frames.size() * m_skies.size(), 0);
    if (!OpenScratch(frames.size())) return false;
    if (watch.shrink > 0 && m_sum.frames.empty()) {
        m_sum.width = std::max(1, m_width / watch.shrink);
        m_sum.height = std::max(1, m_height / watch.shrink);
        m_sum.colours = Colours();
        m_sum.frames.assign(std::size_t(m_sum.width) * std::size_t(m_sum.height), 0);
        m_sum.values.assign(m_sum.frames.size() * m_skies.size(), 0);
    }
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < frames.size() && !watch.IsCancelled() && !m_diskErrs;
             i = next++) {
            std::string thrown;
            faults[i] = Guarded(thrown, [&] { return Take(frames[i], i, watch); });
            if (!thrown.empty()) faults[i] = thrown;
        }
    };
    m_fault = OnWorkers(kThreads, work);
    if (m_diskErrs) m_fault = kNoRoom;
    return !watch.IsCancelled() && m_fault.empty();
}

} // namespace tarn
