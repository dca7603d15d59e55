#include "blink/FrameMaker.h"

#include "common/stop_flag.h"
#include "sky/night/LowPriority.h"
#include "sky/planes/FramesOfFiles.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t kFewestKept = 3; // frames, whatever memory there is
constexpr std::size_t kMostOfMedian = 25;
constexpr std::size_t kFewestOfMedian = 3;

// With what else is held of its file: a mosaic beside its cells, three colours beside their mean.
std::size_t BytesOf(const FrameSamples& samples) {
    constexpr std::size_t kHeld = 4;
    return kHeld * std::size_t(samples.width) * std::size_t(samples.height) *
           std::size_t(samples.planes) * (samples.floats ? sizeof(float) : sizeof(std::uint16_t));
}

} // namespace

// Of the series and view that stood when it was begun.
struct FrameMaker::Work {
    enum class Kind { Reference, Frame, Median };
    Kind kind = Kind::Frame;
    std::size_t number = 0;
    int generation = 0;
    std::shared_ptr<const BlinkSeries> series;
    GridView view;
};

FrameMaker::FrameMaker(std::function<void()> told, int threads) : m_told(std::move(told)) {
    for (int i = 0; i < threads; ++i) m_workers.emplace_back([this] { Run(); });
}

FrameMaker::~FrameMaker() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    for (Worker& worker : m_workers) worker.Join();
}

void FrameMaker::SetMemory(std::size_t bytes) {
    const std::lock_guard lock(m_mutex);
    m_memory = bytes;
}

void FrameMaker::Show(std::shared_ptr<const BlinkSeries> series) {
    {
        const std::lock_guard lock(m_mutex);
        ++m_generation;
        m_series = std::move(series);
        m_ground.reset();
        m_skies.clear();
        m_view = {};
        m_order.clear();
        m_fault.clear();
        m_faults.clear();
        m_frames.clear();
        m_samples.clear();
        m_inWork.clear();
        m_readsReference = false;
        m_makesMedian = false;
        m_median.reset();
        m_medianOf = 0;
    }
    m_changed.notify_all();
}

std::shared_ptr<const BlinkGround> FrameMaker::Ground() const {
    const std::lock_guard lock(m_mutex);
    return m_ground;
}

void FrameMaker::SetView(const GridView& view) {
    {
        const std::lock_guard lock(m_mutex);
        if (view == m_view) return;
        m_view = view;
        m_inWork.clear(); // what is in work is of the old one
        m_medianOf = 0;
        m_makesMedian = false;
    }
    m_changed.notify_all();
}

void FrameMaker::Prefer(std::vector<std::size_t> order) {
    {
        const std::lock_guard lock(m_mutex);
        m_order = std::move(order);
    }
    m_changed.notify_all();
}

void FrameMaker::WantMedian(bool wanted) {
    {
        const std::lock_guard lock(m_mutex);
        m_wantsMedian = wanted;
    }
    m_changed.notify_all();
}

std::shared_ptr<const SeenFrame> FrameMaker::Frame(std::size_t number) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_frames.find(number);
    return found == m_frames.end() ? nullptr : found->second;
}

bool FrameMaker::IsMade(std::size_t number) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_frames.find(number);
    return found != m_frames.end() && found->second->view == m_view;
}

std::shared_ptr<const SeenFrame> FrameMaker::Median() const {
    const std::lock_guard lock(m_mutex);
    return m_median;
}

MakingProgress FrameMaker::Progress() const {
    const std::lock_guard lock(m_mutex);
    MakingProgress progress;
    progress.fault = m_fault;
    for (const std::size_t number : m_order) {
        if (m_faults.contains(number)) continue;
        ++progress.total;
        const auto found = m_frames.find(number);
        if (found != m_frames.end() && found->second->view == m_view) ++progress.made;
    }
    progress.fits = Wanted().size() >= progress.total;
    return progress;
}

std::map<std::size_t, std::string> FrameMaker::Faults() const {
    const std::lock_guard lock(m_mutex);
    return m_faults;
}

// The lock is held by all below, except while they read and make.
std::size_t FrameMaker::BytesOfFrame() const {
    return std::max<std::size_t>(1, std::size_t(m_view.width) * std::size_t(m_view.height) *
                                        sizeof(std::int16_t) *
                                        (m_ground ? m_ground->codes.size() : 1));
}

// Of the order as many as there is memory for, of which a third is for samples.
std::vector<std::size_t> FrameMaker::Wanted() const {
    const std::size_t most = std::max(kFewestKept, m_memory / 3 * 2 / BytesOfFrame());
    std::vector<std::size_t> wanted;
    for (const std::size_t number : m_order) {
        if (wanted.size() >= most) break;
        if (!m_faults.contains(number)) wanted.push_back(number);
    }
    return wanted;
}

// Frames spread over what is made of the view.
std::vector<std::size_t> FrameMaker::ForMedian() const {
    std::vector<std::size_t> made;
    for (const auto& [number, frame] : m_frames)
        if (frame->view == m_view) made.push_back(number);
    std::vector<std::size_t> spread;
    const std::size_t count = std::min(made.size(), kMostOfMedian);
    for (std::size_t i = 0; i < count; ++i) spread.push_back(made[i * made.size() / count]);
    return spread;
}

std::optional<FrameMaker::Work> FrameMaker::NextWork() {
    if (!m_series || !m_fault.empty()) return {};
    Work work{Work::Kind::Reference, m_series->reference, m_generation, m_series, m_view};
    if (!m_ground) {
        if (m_readsReference) return {};
        m_readsReference = true;
        return work;
    }
    if (m_view.IsEmpty()) return {};
    bool all = true;
    work.kind = Work::Kind::Frame;
    const std::vector<std::size_t> wanted = Wanted();
    for (const std::size_t number : wanted) {
        const auto found = m_frames.find(number);
        if (found != m_frames.end() && found->second->view == m_view) continue;
        all = false;
        if (m_inWork.contains(number)) continue;
        work.number = number;
        m_inWork.insert(number);
        return work;
    }
    // A first one of what there is, then one of them all.
    const std::size_t frames = m_wantsMedian ? ForMedian().size() : 0;
    const bool more = m_medianOf == 0 || (all && frames > m_medianOf);
    if (!m_makesMedian && frames >= std::min(kFewestOfMedian, wanted.size()) && frames > 1 &&
        more && (all || frames >= kMostOfMedian / 2)) {
        work.kind = Work::Kind::Median;
        m_makesMedian = true;
        return work;
    }
    return {};
}

void FrameMaker::Run() {
    BeLowOf("blink");
    const HeedsStop heeds(m_ends);
    std::unique_lock lock(m_mutex);
    for (;;) {
        std::optional<Work> work;
        m_changed.wait(lock, [&] { return m_ends || (work = NextWork()); });
        if (m_ends) return;
        Do(std::move(*work), lock);
        if (m_ends) return;
        lock.unlock();
        m_changed.notify_all();
        m_told();
        lock.lock();
    }
}

void FrameMaker::Do(Work work, std::unique_lock<std::mutex>& lock) {
    switch (work.kind) {
    case Work::Kind::Reference:
        return ReadReference(work, lock);
    case Work::Kind::Frame:
        return MakeFrame(work, lock);
    case Work::Kind::Median:
        return MakeMedian(work, lock);
    }
}

void FrameMaker::ReadReference(const Work& work, std::unique_lock<std::mutex>& lock) {
    lock.unlock();
    std::string error;
    std::string thrown;
    auto ground = std::make_shared<BlinkGround>();
    std::vector<SkyGrid> skies;
    const auto read = Guarded(thrown, [&] {
        auto frame = work.series->read(work.number, error);
        if (!frame) return frame;
        ground->grid = {frame->samples.width, frame->samples.height, frame->cell, frame->bottomUp};
        for (int plane = 0; plane < frame->samples.planes; ++plane) {
            skies.push_back(SkyOf(frame->samples, plane));
            ground->codes.emplace_back(skies.back().level, skies.back().noise);
        }
        ground->stretch = StretchOfFrame(frame->samples);
        return frame;
    });
    lock.lock();
    if (work.generation != m_generation) return;
    m_readsReference = false;
    if (!read) {
        m_fault = !thrown.empty() ? thrown : error.empty() ? "cannot be read" : error;
        return;
    }
    m_ground = std::move(ground);
    m_skies = std::move(skies);
    KeepSamples(work.number, *read);
}

void FrameMaker::MakeFrame(const Work& work, std::unique_lock<std::mutex>& lock) {
    const auto ground = m_ground;
    const std::vector<SkyGrid> skies = m_skies;
    const auto known = m_samples.find(work.number);
    std::optional<ReadFrame> read;
    if (known != m_samples.end()) read = known->second;
    lock.unlock();
    std::string error;
    std::string thrown;
    const Made made = Guarded(thrown, [&]() -> Made {
        if (!read) read = work.series->read(work.number, error);
        if (!read) return nullptr;
        const FrameSamples& samples = read->samples;
        if (read->cell != ground->grid.cell || samples.planes != int(ground->codes.size())) {
            error = "another kind of sensor than the reference's";
            return nullptr;
        }
        const SeriesFrame& frame = work.series->frames[work.number];
        const FrameMap map = InCells(frame.map, read->cell);
        std::vector<PlaneLevels> levels;
        for (int plane = 0; plane < samples.planes; ++plane) {
            const auto at = std::size_t(plane);
            levels.push_back({frame.light,
                              SurfaceBetween(SkyOf(samples, plane), frame.light, map, skies[at]),
                              ground->codes[at]});
        }
        return std::make_shared<const SeenFrame>(SeeFrame(samples, map, levels, work.view));
    });
    lock.lock();
    if (work.generation != m_generation || m_ends) return;
    if (!made) {
        m_faults[work.number] = !thrown.empty() ? thrown : error.empty() ? "cannot be read" : error;
        m_inWork.erase(work.number);
        return;
    }
    KeepSamples(work.number, *read);
    if (!(work.view == m_view)) return; // it is asked for again
    m_inWork.erase(work.number);
    Keep(work.number, made);
}

// What is shown last goes first.
void FrameMaker::Keep(std::size_t number, Made frame) {
    m_frames[number] = std::move(frame);
    const std::vector<std::size_t> wanted = Wanted();
    const std::set<std::size_t> stays(wanted.begin(), wanted.end());
    std::erase_if(m_frames, [&](const auto& each) { return !stays.contains(each.first); });
}

void FrameMaker::KeepSamples(std::size_t number, const ReadFrame& read) {
    const std::size_t all = BytesOf(read.samples) * m_series->frames.size();
    if (all <= m_memory / 3) m_samples[number] = read;
}

void FrameMaker::MakeMedian(const Work& work, std::unique_lock<std::mutex>& lock) {
    std::vector<Made> frames;
    for (const std::size_t number : ForMedian()) frames.push_back(m_frames[number]);
    lock.unlock();
    std::string thrown;
    const Made median = Guarded(thrown, [&]() -> Made {
        std::vector<const SeenFrame*> all;
        for (const Made& frame : frames) all.push_back(frame.get());
        return std::make_shared<const SeenFrame>(MedianOfFrames(all));
    });
    lock.lock();
    if (work.generation != m_generation || !(work.view == m_view)) return;
    m_makesMedian = false;
    m_medianOf = frames.size();
    m_median = median;
}

} // namespace tarn
