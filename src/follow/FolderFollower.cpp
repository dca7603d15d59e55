#include "follow/FolderFollower.h"

#include "common/paths.h"
#include "sky/night/LowPriority.h"

#include <chrono>
#include <utility>

namespace tarn {

namespace {

using namespace std::chrono_literals;

constexpr auto kBetween = 500ms; // two looks at least
constexpr auto kUntold = 5s;     // looks, where the disk tells nothing

std::int64_t Now() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void Append(NewFiles::Names& names, NewFiles::Names&& more) {
    names.insert(names.end(), std::make_move_iterator(more.begin()),
                 std::make_move_iterator(more.end()));
}

} // namespace

FolderFollower::FolderFollower(const Files& files, std::function<void()> told)
    : m_files(files), m_told(std::move(told)) {
    m_worker = Worker([this] { Work(); });
}

FolderFollower::~FolderFollower() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_worker.Join();
}

void FolderFollower::Follow(const std::string& folder, NewFiles::Names known) {
    {
        const std::lock_guard lock(m_mutex);
        m_folder = folder;
        m_known = std::move(known);
        m_isNew = true;
        m_isAwake = true;
        m_news.reset();
    }
    m_changed.notify_all();
}

void FolderFollower::Wake() {
    {
        const std::lock_guard lock(m_mutex);
        m_isAwake = true;
    }
    m_changed.notify_all();
}

std::optional<FolderFollower::News> FolderFollower::Take() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_news, {});
}

void FolderFollower::Look(std::unique_lock<std::mutex>& lock) {
    const std::string folder = m_folder;
    if (std::exchange(m_isNew, false)) m_there.Begin(std::exchange(m_known, {}));
    m_isAwake = false;
    lock.unlock();
    NewFiles::News news;
    // A folder that cannot be read now has neither lost nor got anything.
    if (const auto names = m_files.FileNames(folder)) {
        const auto look = [&](const std::string& name) {
            return m_files.Look(JoinPath(folder, name));
        };
        const auto finished = [&](const std::string& name, const FileLook& seen) {
            return FinishedOf(JoinPath(folder, name), seen);
        };
        news = m_there.Look(*names, Now(), {look, finished});
    }
    lock.lock();
    if (m_isNew || (news.whole.empty() && news.gone.empty())) return;
    if (!m_news) m_news = News{{}, folder};
    Append(m_news->whole, std::move(news.whole));
    Append(m_news->gone, std::move(news.gone));
    lock.unlock();
    m_told();
    lock.lock();
}

void FolderFollower::Work() {
    BeLowOf("follow");
    std::unique_lock lock(m_mutex);
    while (!m_ends) {
        if (m_folder.empty()) {
            m_changed.wait(lock, [this] { return m_ends || !m_folder.empty(); });
            continue;
        }
        Look(lock);
        m_changed.wait_for(lock, kBetween, [this] { return m_ends || m_isNew; });
        if (m_there.Waits()) continue;
        m_changed.wait_for(lock, kUntold, [this] { return m_ends || m_isAwake; });
    }
}

} // namespace tarn
