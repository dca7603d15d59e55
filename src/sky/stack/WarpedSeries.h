// The frames of a series read once, levelled and laid over each other, and kept on the disk as rows
// that all of them can be asked for.
#pragma once

#include "sky/stack/Codes.h"
#include "sky/stack/Levels.h"
#include "sky/stack/Scratch.h"
#include "sky/stack/Warp.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace tarn {

struct SeriesFrame {
    std::size_t number = 0; // by which the reader knows it
    FrameMap map;           // to the reference, samples
    double light = 1;       // what its values are multiplied by
};

// The mean of what has come so far, shrunk, for those who watch.
struct PartialSum {
    int width = 0;
    int height = 0;
    int colours = 1;
    std::vector<float> values; // colour after colour; of the reference's grid and values
    std::vector<float> frames; // that have a value there, of the first colour
};

struct SeriesWatch {
    std::atomic<bool>* cancelled = nullptr;
    int shrink = 0; // grid samples a side of one in the partial sum; 0: none is wanted
    // Called on threads of the series, one at a time, when a frame more is done.
    std::function<void(std::size_t done, const PartialSum& sum)> told;

    bool IsCancelled() const { return cancelled && cancelled->load(); }
};

class WarpedSeries {
public:
    static constexpr int kThreads = 2;

    // What it keeps goes into a nameless file of the folder.
    WarpedSeries(std::string folder, FrameReader read)
        : m_folder(std::move(folder)), m_read(std::move(read)) {}

    // The frame whose grid, sky and light all get; the answer is why it cannot be had.
    std::string SetReference(std::size_t number);

    // These frames in place of those before. False with `Fault` when nothing came of it, as on a
    // full disk, or when cancelled (without); what is wrong with single frames is in `faults`, one
    // for each.
    bool Make(std::span<const SeriesFrame> frames, const SeriesWatch& watch,
              std::vector<std::string>& faults);
    const std::string& Fault() const { return m_fault; }

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int Colours() const { return int(m_skies.size()); }
    const SampleCodes& Codes(int colour) const { return m_codes[std::size_t(colour)]; }

    // Of a sample before it is warped, in deviations of the reference's; by the place in `frames`.
    double Noise(std::size_t frame, int colour) const {
        return m_noises[frame * m_skies.size() + std::size_t(colour)];
    }

    // Rows of a frame; any thread. False where the disk errs.
    bool Read(std::size_t frame, int colour, int row, int rows, std::int16_t* to) const;
    // Some beside each other of one row.
    bool ReadRun(std::size_t frame, int colour, int x, int y, int count, std::int16_t* to) const;

private:
    std::size_t RowAt(std::size_t frame, int colour, int row) const;
    bool OpenScratch(std::size_t frames);
    std::string FaultOf(const FrameSamples& samples) const;
    std::string Take(const SeriesFrame& frame, std::size_t place, const SeriesWatch& watch);
    void AddToSum(const SeriesWatch& watch, const std::vector<float>& shrunk);

    std::string m_folder;
    FrameReader m_read;
    int m_width = 0;
    int m_height = 0;
    std::vector<SkyGrid> m_skies; // of the reference's colours
    std::vector<SampleCodes> m_codes;
    std::vector<double> m_noises;
    std::unique_ptr<Scratch> m_scratch;
    std::string m_fault;
    std::atomic<bool> m_diskErrs = false;
    std::mutex m_mutex; // of what follows
    PartialSum m_sum;
    std::size_t m_done = 0;
};

} // namespace tarn
