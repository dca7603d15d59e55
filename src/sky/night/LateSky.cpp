#include "sky/night/LateSky.h"

#include "sky/headers/FrameHeader.h"
#include "sky/night/LowPriority.h"
#include "sky/place/SkyLines.h"

#include <utility>

namespace tarn {

LateSky::LateSky(std::function<void()> told) : m_told(std::move(told)) {
    m_worker = Worker([this] { Work(); });
}

LateSky::~LateSky() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_worker.Join();
}

void LateSky::Ask(Wish wish) {
    {
        const std::lock_guard lock(m_mutex);
        m_isAsked = !wish.path.empty();
        m_asked = std::move(wish);
        m_answer.reset();
    }
    m_changed.notify_all();
}

std::optional<SkyOfFile> LateSky::Take() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_answer, {});
}

std::vector<std::string> LateSky::LinesFor(const Wish& wish) {
    const std::optional<int> zone =
        wish.otherwise ? wish.otherwise->zoneMinutes : std::optional<int>();
    const FrameHeader header = ReadFrameHeader(wish.path, zone);
    if (!header.fault.empty()) return {"     Missing: " + header.fault};
    const bool unsure = header.where.HasUnsureSite();
    if (unsure && m_known != wish.beside) {
        std::vector<FrameWhere> frames;
        for (const std::string& path : wish.beside) {
            {
                const std::lock_guard lock(m_mutex);
                if (m_ends || m_asked.beside != wish.beside) return {};
            }
            FrameHeader other = ReadFrameHeader(path, zone);
            if (other.fault.empty()) frames.push_back(std::move(other.where));
        }
        const LongitudeSense sense = SenseOf(frames);
        m_countsWest = sense.countsWest;
        m_said = sense.said;
        m_known = wish.beside;
    }
    const LongitudeSense sense{unsure && m_countsWest, m_said};
    const std::optional<Site> otherwise =
        wish.otherwise ? std::optional(wish.otherwise->site) : std::nullopt;
    std::vector<std::string> lines =
        SkyLines(SkyRowOf(header.where, sense, otherwise), sense, unsure);
    if (!m_measures) m_measures = std::make_unique<KeptMeasures>();
    if (const auto measures = m_measures->Of(wish.path))
        for (std::string& line : MeasureLines(*measures)) lines.push_back(std::move(line));
    return lines;
}

void LateSky::Work() {
    BeLowOf("sky");
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ends || m_isAsked; });
        if (m_ends) return;
        const Wish wish = m_asked;
        m_isAsked = false;
        lock.unlock();
        std::string thrown;
        SkyOfFile sky{wish.path, Guarded(thrown, [&] { return LinesFor(wish); })};
        if (!thrown.empty()) sky.lines = {"     Missing: " + thrown};
        lock.lock();
        if (m_isAsked || wish.path != m_asked.path) continue; // another is wanted by now
        m_answer = std::move(sky);
        lock.unlock();
        m_told();
        lock.lock();
    }
}

} // namespace tarn
