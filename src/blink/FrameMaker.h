// The frames of a blink made in the background at the size in which they are seen, those that are
// shown next before all others, on threads that give way to all others.
#pragma once

#include "blink/FrameLight.h"
#include "blink/SeenFrame.h"
#include "common/worker.h"
#include "sky/stack/WarpedSeries.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarn {

// A frame as its file has it.
struct ReadFrame {
    FrameSamples samples; // one plane or three, no mosaic
    int cell = 1;
    bool bottomUp = false;
};
// Of this number; none with an error. Called on several threads at once.
using BlinkReader = std::function<std::optional<ReadFrame>(std::size_t frame, std::string& error)>;

struct BlinkSeries {
    std::vector<SeriesFrame> frames; // by number, one each; maps between pixels of the files
    std::size_t reference = 0;
    BlinkReader read;
};

// What all frames are shown by, from the reference.
struct BlinkGround {
    GridSize grid;
    std::vector<SampleCodes> codes; // of each plane
    Stretch stretch;
};

struct MakingProgress {
    std::size_t made = 0; // of this view
    std::size_t total = 0;
    bool fits = true;  // all of them into the memory
    std::string fault; // why nothing can be made at all
};

class FrameMaker {
public:
    // `told` is called on threads of this one's, when something more is there.
    explicit FrameMaker(std::function<void()> told, int threads = kThreads);
    ~FrameMaker();
    FrameMaker(const FrameMaker&) = delete;
    FrameMaker& operator=(const FrameMaker&) = delete;

    static constexpr int kThreads = 2;

    // Bytes for all that is kept; from the next frame on.
    void SetMemory(std::size_t bytes);

    // These frames from now on, or none; what is still to come of others is dropped.
    void Show(std::shared_ptr<const BlinkSeries> series);
    // None until the reference has been read.
    std::shared_ptr<const BlinkGround> Ground() const;

    // What is seen of them. Frames of an older view stay until there are others.
    void SetView(const GridView& view);
    // Numbers, the first ones before all others; others are not made.
    void Prefer(std::vector<std::size_t> order);
    // Also the median of what is made of the view.
    void WantMedian(bool wanted);

    // The newest; null where there is none.
    std::shared_ptr<const SeenFrame> Frame(std::size_t number) const;
    bool IsMade(std::size_t number) const; // of the view
    std::shared_ptr<const SeenFrame> Median() const;
    MakingProgress Progress() const;
    std::map<std::size_t, std::string> Faults() const; // by number, of frames that cannot be read

private:
    struct Work;
    using Made = std::shared_ptr<const SeenFrame>;

    void Run();
    std::optional<Work> NextWork();
    void Do(Work work, std::unique_lock<std::mutex>& lock);
    void ReadReference(const Work& work, std::unique_lock<std::mutex>& lock);
    void MakeFrame(const Work& work, std::unique_lock<std::mutex>& lock);
    void MakeMedian(const Work& work, std::unique_lock<std::mutex>& lock);
    std::vector<std::size_t> Wanted() const;
    std::vector<std::size_t> ForMedian() const;
    std::size_t BytesOfFrame() const;
    void Keep(std::size_t number, Made frame);
    void KeepSamples(std::size_t number, const ReadFrame& read);

    const std::function<void()> m_told;
    mutable std::mutex m_mutex; // of all below
    std::condition_variable m_changed;
    std::atomic<bool> m_ends = false;
    std::size_t m_memory = std::size_t(1) << 30U;
    int m_generation = 0; // of the series
    std::shared_ptr<const BlinkSeries> m_series;
    std::shared_ptr<const BlinkGround> m_ground;
    std::vector<SkyGrid> m_skies; // of the reference
    GridView m_view;
    std::vector<std::size_t> m_order;
    bool m_wantsMedian = false;
    std::string m_fault;
    std::map<std::size_t, std::string> m_faults;
    std::map<std::size_t, Made> m_frames;
    std::map<std::size_t, ReadFrame> m_samples; // where those of all frames have room
    std::set<std::size_t> m_inWork;
    bool m_readsReference = false;
    bool m_makesMedian = false;
    Made m_median;
    std::size_t m_medianOf = 0;    // frames
    std::vector<Worker> m_workers; // last: they use all above
};

} // namespace tarn
