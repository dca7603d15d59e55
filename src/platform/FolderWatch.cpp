#include "platform/FolderWatch.h"

#include <array>
#include <cstring>

#include <sys/inotify.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr std::uint32_t kWatched = IN_CREATE | IN_DELETE | IN_MOVE | IN_DELETE_SELF | IN_ONLYDIR;

} // namespace

FolderWatch::FolderWatch(std::function<void(const std::string&)> changed)
    : m_changed(std::move(changed)), m_events(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
      m_notifier(QSocketNotifier::Read) {
    if (m_events < 0) return;
    m_notifier.setSocket(m_events);
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier,
                     [this] { TakeEvents(); });
    m_notifier.setEnabled(true);
}

FolderWatch::~FolderWatch() {
    m_notifier.setEnabled(false);
    if (m_events >= 0) ::close(m_events);
}

void FolderWatch::Watch(const std::string& folder) {
    if (m_events < 0 || (folder == m_folder && m_watched >= 0)) return;
    if (m_watched >= 0) ::inotify_rm_watch(m_events, m_watched);
    m_folder = folder;
    m_watched = folder.empty() ? -1 : ::inotify_add_watch(m_events, folder.c_str(), kWatched);
}

void FolderWatch::TakeEvents() {
    alignas(inotify_event) std::array<char, 1 << 14> buffer{};
    for (;;) {
        const ssize_t got = ::read(m_events, buffer.data(), buffer.size());
        if (got <= 0) return;
        for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char* name = buffer.data() + at + sizeof event;
            at += sizeof event + event.len;
            const bool overflows = (event.mask & IN_Q_OVERFLOW) != 0;
            if (event.wd != m_watched && !overflows) continue; // of the folder before
            if (event.mask & IN_IGNORED) m_watched = -1;       // the system watches it no more
            m_changed(event.len > 0 ? std::string(name) : std::string());
        }
    }
}

} // namespace tarn
