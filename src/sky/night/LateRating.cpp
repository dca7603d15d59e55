#include "sky/night/LateRating.h"

#include "common/stop_flag.h"
#include "sky/clips/ClipRating.h"
#include "sky/night/LowPriority.h"

#include <chrono>
#include <utility>

#include <sys/stat.h>

namespace tarn {

namespace {

constexpr auto kBetween = std::chrono::milliseconds(150); // two tellings
constexpr std::size_t kMostKept = 2'000'000;              // frames of all clips

} // namespace

LateRating::LateRating(std::function<void()> told) : m_told(std::move(told)) {
    m_worker = Worker([this] { Work(); });
}

LateRating::~LateRating() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
        m_stop = true;
    }
    m_changed.notify_all();
    m_worker.Join();
}

void LateRating::Ask(const std::string& path) {
    {
        const std::lock_guard lock(m_mutex);
        m_asked = path;
        m_isAsked = !path.empty();
        m_isCancelled = false;
        m_new.clear();
        m_whole.reset();
        m_stop = true;
    }
    m_changed.notify_all();
}

void LateRating::Cancel() {
    const std::lock_guard lock(m_mutex);
    m_isCancelled = true;
    m_stop = true;
}

std::optional<LateRating::News> LateRating::Take() {
    const std::lock_guard lock(m_mutex);
    if (m_new.empty() && !m_whole) return {};
    return News{m_asked, std::exchange(m_new, {}), std::exchange(m_whole, {})};
}

LateRating::Whole LateRating::KeptOf(const std::string& path) {
    struct stat status {};
    const bool stands = ::stat(path.c_str(), &status) == 0;
    const std::lock_guard lock(m_mutex);
    for (const auto& [name, clip] : m_kept)
        if (name == path && stands && clip->look == LookOf(status)) return clip;
    return {};
}

void LateRating::Keep(const std::string& path, const Whole& clip) {
    m_kept.remove_if([&](const auto& each) { return each.first == path; });
    m_kept.emplace_front(path, clip);
    std::size_t frames = 0;
    for (const auto& each : m_kept) frames += each.second->frames.size();
    while (frames > kMostKept && m_kept.size() > 1) {
        frames -= m_kept.back().second->frames.size();
        m_kept.pop_back();
    }
}

LateRating::Whole LateRating::Rate(const std::string& path) {
    auto last = std::chrono::steady_clock::now();
    const auto clip = std::make_shared<RatedClip>();
    const auto watch = [&](const RatedFrame& frame) {
        const auto now = std::chrono::steady_clock::now();
        const bool tells = now - last > kBetween;
        {
            const std::lock_guard lock(m_mutex);
            if (m_stop) return false;
            m_new.push_back(frame);
        }
        if (tells) {
            last = now;
            m_told();
        }
        return true;
    };
    std::string thrown;
    *clip = Guarded(thrown, [&] { return RateClip(path, watch); });
    if (!thrown.empty()) clip->fault = thrown;
    if (clip->frames.empty() && clip->fault.empty()) clip->fault = "The clip has no frames";
    return clip;
}

void LateRating::Work() {
    BeLowOf("clip");
    const HeedsStop heeds(m_stop);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ends || m_isAsked; });
        if (m_ends) return;
        const std::string path = m_asked;
        m_isAsked = false;
        m_stop = m_isCancelled.load();
        lock.unlock();
        Whole clip = KeptOf(path);
        const bool isKept = bool(clip);
        if (!isKept) clip = Rate(path);
        lock.lock();
        if (m_isAsked || path != m_asked) continue; // another is wanted by now
        if (isKept) {
            m_new = clip->frames;
        } else if (m_isCancelled) {
            auto part = std::make_shared<RatedClip>(*clip);
            part->fault = "cancelled";
            clip = part;
        } else {
            Keep(path, clip);
        }
        m_whole = clip;
        lock.unlock();
        m_told();
        lock.lock();
    }
}

} // namespace tarn
