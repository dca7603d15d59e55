#include "follow/NewFiles.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tarn {

namespace {

constexpr std::int64_t kRest = 2000;    // milliseconds, of a kind that does not tell its end
constexpr std::int64_t kBroken = 10000; // of one whose end never comes

} // namespace

void NewFiles::Begin(const Names& known) {
    m_known = {known.begin(), known.end()};
    m_growing.clear();
}

// At rest for two looks at least.
bool NewFiles::IsWhole(const std::string& name, Growing& growing, std::int64_t now,
                       const Disk& disk) const {
    const auto look = disk.look(name);
    if (!look) return false;
    if (growing.look != *look) {
        growing = {*look, now};
        return false;
    }
    const std::int64_t rest = now - growing.since;
    const Finished finished = disk.finished(name);
    return rest >= (finished == Finished::Yes       ? 0
                    : finished == Finished::Unknown ? kRest
                                                    : kBroken);
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
    using Aged = std::tuple<std::int64_t, std::int64_t, std::string>;
    std::vector<Aged> whole;
    for (const std::string& name : names) {
        if (m_known.contains(name)) continue;
        Growing& growing = m_growing[name];
        if (IsWhole(name, growing, now, disk))
            whole.emplace_back(growing.look.seconds, growing.look.nanoseconds, name);
    }
    std::sort(whole.begin(), whole.end());
    for (auto& [seconds, nanoseconds, name] : whole) {
        m_growing.erase(name);
        m_known.insert(name);
        news.whole.push_back(std::move(name));
    }
    return news;
}

} // namespace tarn
