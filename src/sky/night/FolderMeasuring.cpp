#include "sky/night/FolderMeasuring.h"

#include "common/paths.h"
#include "common/stop_flag.h"
#include "facts/CaptureTime.h"
#include "imaging/PictureLoader.h"
#include "sky/measures/MeasureStore.h"
#include "sky/night/LowPriority.h"
#include "sky/planes/MeasurePicture.h"

#include <utility>

namespace tarn {

FolderMeasuring::FolderMeasuring(std::string storeFile, std::function<void()> told, int threads)
    : m_told(std::move(told)) {
    m_keeper = Worker([this, storeFile = std::move(storeFile)] { Keep(storeFile); });
    for (int i = 0; i < threads; ++i) m_measurers.emplace_back([this] { Measure(); });
}

FolderMeasuring::~FolderMeasuring() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    for (Worker& measurer : m_measurers) measurer.Join();
    m_keeper.Join();
}

void FolderMeasuring::Show(std::vector<std::string> paths) {
    {
        const std::lock_guard lock(m_mutex);
        ++m_generation;
        m_wanted.clear();
        for (std::string& path : paths) {
            m_wanted.emplace_back();
            m_wanted.back().file.path = std::move(path);
        }
        m_preferred = 0;
        m_done = 0;
        m_cancelled = false;
        m_looksForGone = !m_wanted.empty();
        m_answers.clear();
    }
    m_changed.notify_all();
}

void FolderMeasuring::Prefer(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    for (std::size_t i = 0; i < m_wanted.size(); ++i)
        if (m_wanted[i].file.path == path) m_preferred = i;
}

void FolderMeasuring::Cancel() {
    const std::lock_guard lock(m_mutex);
    m_cancelled = true;
}

void FolderMeasuring::Resume() {
    {
        const std::lock_guard lock(m_mutex);
        m_cancelled = false;
    }
    m_changed.notify_all();
}

std::vector<MeasuredFile> FolderMeasuring::Take() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_answers, {});
}

MeasuringProgress FolderMeasuring::Progress() const {
    const std::lock_guard lock(m_mutex);
    return {m_done, m_wanted.size(), m_cancelled};
}

// To the preferred one, the next ones before those behind it. The lock is held.
std::optional<std::size_t> FolderMeasuring::Nearest(Stage stage) const {
    if (m_cancelled) return {};
    for (std::size_t away = 0; away < m_wanted.size(); ++away) {
        const std::size_t on = m_preferred + away;
        if (on < m_wanted.size() && m_wanted[on].stage == stage) return on;
        if (away <= m_preferred && m_wanted[m_preferred - away].stage == stage)
            return m_preferred - away;
    }
    return {};
}

// The lock is held. What belongs to files that are shown no more is dropped.
void FolderMeasuring::Answer(int generation, std::size_t index, MeasuredFile file) {
    if (generation != m_generation) return;
    m_wanted[index].stage = Stage::Done;
    ++m_done;
    m_answers.push_back(std::move(file));
}

void FolderMeasuring::Keep(const std::string& storeFile) {
    BeLowOf("measures-store");
    const HeedsStop heeds(m_ends);
    MeasureStore store(storeFile);
    CaptureTimes times;
    std::string untold; // such a file has no time, and is measured again
    std::unique_lock lock(m_mutex);
    for (;;) {
        std::optional<std::size_t> next;
        m_changed.wait(lock, [&] {
            next = Nearest(Stage::Asked);
            return m_ends || !m_toKeep.empty() || next || m_looksForGone;
        });
        if (!m_toKeep.empty()) { // also at the end
            const MeasuredFile kept = std::move(m_toKeep.front());
            m_toKeep.pop_front();
            lock.unlock();
            store.Put(kept.path, kept.look, kept.measures);
            lock.lock();
            continue;
        }
        if (m_ends) return;
        const int generation = m_generation;
        if (!next) {
            m_looksForGone = false;
            const std::string folder =
                m_wanted.empty() ? std::string() : FolderOf(m_wanted.front().file.path);
            lock.unlock();
            if (!folder.empty()) store.DropVanished(folder);
            lock.lock();
            continue;
        }
        MeasuredFile file = m_wanted[*next].file;
        m_wanted[*next].stage = Stage::InWork;
        lock.unlock();
        file.look = PictureLoader::LookAt(file.path);
        auto known = store.Find(file.path, file.look);
        file.taken = Guarded(untold, [&] { return times.Of(file.path); });
        lock.lock();
        if (known) {
            file.measures = std::move(*known);
            Answer(generation, *next, std::move(file));
        } else if (generation == m_generation) {
            m_wanted[*next] = {std::move(file), Stage::Missing};
        }
        lock.unlock();
        if (known)
            m_told();
        else
            m_changed.notify_all();
        lock.lock();
    }
}

void FolderMeasuring::Measure() {
    BeLowOf("measuring");
    const HeedsStop heeds(m_ends);
    std::unique_lock lock(m_mutex);
    for (;;) {
        std::optional<std::size_t> next;
        m_changed.wait(lock, [&] {
            next = Nearest(Stage::Missing);
            return m_ends || next;
        });
        if (m_ends) return;
        const int generation = m_generation;
        MeasuredFile file = m_wanted[*next].file;
        m_wanted[*next].stage = Stage::InWork;
        lock.unlock();
        file.measures = MeasurePicture(file.path);
        // A file that changed meanwhile, or could not be read, is asked again.
        const bool keeps = file.measures.width > 0 && PictureLoader::LookAt(file.path) == file.look;
        lock.lock();
        if (m_ends) return; // the reading may have been broken off
        if (keeps) m_toKeep.push_back(file);
        Answer(generation, *next, std::move(file));
        lock.unlock();
        m_changed.notify_all();
        m_told();
        lock.lock();
    }
}

} // namespace tarn
