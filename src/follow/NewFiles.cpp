#include "follow/NewFiles.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tarn {

namespace {

constexpr std::int64_t kRest = 2000;    // milliseconds, of a kind that does not tell its end
constexpr std::int64_t kBroken = 10000; // of one whose end never comes
constexpr std::int64_t kDoubt = 60000;  // for which one of those may still grow

} // namespace

void NewFiles::Begin(const Names& known) {
    m_known = {known.begin(), known.end()};
    m_growing.clear();
    m_doubtful.clear();
}

// An empty one may stay so for long.
bool NewFiles::Waits() const {
    return std::any_of(m_growing.begin(), m_growing.end(),
                       [](const auto& each) { return each.second.look.bytes > 0; });
}

// At rest for two looks at least.
bool NewFiles::IsWhole(const std::string& name, Growing& growing, std::int64_t now,
                       const Disk& disk) {
    const auto look = disk.look(name);
    if (!look) return false;
    if (growing.look != *look) {
        growing = {*look, now};
        return false;
    }
    if (look->bytes == 0) return false;
    const std::int64_t rest = now - growing.since;
    growing.finished = disk.finished(name, *look);
    return rest >= (growing.finished == Finished::Yes       ? 0
                    : growing.finished == Finished::Unknown ? kRest
                                                            : kBroken);
}

// Its writer may have paused for longer than it rested.
void NewFiles::LookAtDoubtful(std::int64_t now, const Disk& disk) {
    std::erase_if(m_doubtful, [&](const auto& each) {
        const auto& [name, told] = each;
        const auto look = m_known.contains(name) ? disk.look(name) : std::nullopt;
        if (!look) return true;
        if (look->bytes <= told.look.bytes) return now - told.since > kDoubt;
        m_growing[name] = {*look, now};
        return true;
    });
}

NewFiles::News NewFiles::Look(const Names& names, std::int64_t now, const Disk& disk) {
    News news;
    const std::unordered_set<std::string> there(names.begin(), names.end());
    std::erase_if(m_known, [&](const std::string& name) {
        if (there.contains(name)) return false;
        news.gone.push_back(name);
        return true;
    });
    std::erase_if(m_growing, [&](const auto& each) { return !there.contains(each.first); });
    LookAtDoubtful(now, disk);
    using Aged = std::tuple<std::int64_t, std::int64_t, std::string>;
    std::vector<Aged> whole;
    for (const std::string& name : names) {
        if (m_known.contains(name) && !m_growing.contains(name)) continue;
        Growing& growing = m_growing[name];
        if (IsWhole(name, growing, now, disk))
            whole.emplace_back(growing.look.seconds, growing.look.nanoseconds, name);
    }
    std::sort(whole.begin(), whole.end());
    for (auto& [seconds, nanoseconds, name] : whole) {
        const Growing told = m_growing.extract(name).mapped();
        if (told.finished != Finished::Yes) m_doubtful[name] = {told.look, now};
        m_known.insert(name);
        news.whole.push_back(std::move(name));
    }
    return news;
}

} // namespace tarn
