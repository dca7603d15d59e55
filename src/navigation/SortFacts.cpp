#include "navigation/SortFacts.h"

#include "common/paths.h"
#include "common/stop_flag.h"
#include "facts/CaptureTime.h"

#include <atomic>

namespace tarn {

namespace {

constexpr int kThreads = 2;

} // namespace

// One reading of a folder; its threads and its owner hold it.
struct SortFacts::Run {
    std::string folder;
    std::vector<std::string> names;
    int kind = 0;
    std::shared_ptr<const Facts> before; // of the same folder and kind, or null
    std::vector<Fact> facts;             // by the place of the name
    std::atomic<bool> stops = false;
    std::atomic<std::size_t> next = 0;
    std::atomic<int> working = kThreads;
};

SortFacts::SortFacts(const Files& files, std::function<void()> told)
    : m_files(files), m_told(std::move(told)) {}

SortFacts::~SortFacts() {
    for (Begun& begun : m_begun) begun.run->stops = true;
}

void SortFacts::Read(const std::string& folder, std::vector<std::string> names, int kind) {
    TakeFinished();
    if (m_run) m_run->stops = true;
    std::erase_if(m_begun, [](const Begun& begun) { return begun.run->working == 0; });
    const bool same = m_facts && folder == m_folder && kind == m_kind;
    auto run = std::make_shared<Run>();
    run->folder = folder;
    run->kind = kind;
    run->before = same ? m_facts : nullptr;
    run->facts.resize(names.size());
    run->names = std::move(names);
    m_run = run;
    for (int i = 0; i < kThreads; ++i)
        m_begun.push_back(
            {run, Worker([run, &files = m_files, told = m_told] { Work(*run, files, told); })});
}

void SortFacts::Work(Run& run, const Files& files, const std::function<void()>& told) {
    const HeedsStop heeds(run.stops);
    const SortKind& kind = SortKinds()[static_cast<std::size_t>(run.kind)];
    CaptureTimes times;
    for (std::size_t i = run.next++; i < run.names.size() && !run.stops; i = run.next++) {
        const std::string path = JoinPath(run.folder, run.names[i]);
        const auto look = files.Look(path);
        if (!look) continue;
        Fact& fact = run.facts[i];
        fact.look = *look;
        if (kind.keyOfLook) {
            fact.key = kind.keyOfLook(*look);
            continue;
        }
        if (run.before) {
            const auto known = run.before->find(run.names[i]);
            if (known != run.before->end() && known->second.look == *look) {
                fact.key = known->second.key;
                continue;
            }
        }
        std::string untold; // such a file has no time
        fact.key = Guarded(untold, [&] { return times.Of(path); });
    }
    if (--run.working == 0 && !run.stops) told();
}

void SortFacts::TakeFinished() {
    if (!m_run || m_run->working > 0 || m_run->stops) return;
    auto facts = std::make_shared<Facts>();
    facts->reserve(m_run->names.size());
    for (std::size_t i = 0; i < m_run->names.size(); ++i)
        facts->emplace(std::move(m_run->names[i]), m_run->facts[i]);
    m_folder = m_run->folder;
    m_kind = m_run->kind;
    m_facts = std::move(facts);
    m_run = nullptr;
}

bool SortFacts::IsRead() const {
    return !m_run || m_run->working == 0;
}

std::optional<std::int64_t> SortFacts::KeyOf(const std::string& folder, const std::string& name,
                                             int kind) {
    TakeFinished();
    if (!m_facts || folder != m_folder || kind != m_kind) return {};
    const auto known = m_facts->find(name);
    return known == m_facts->end() ? std::nullopt : known->second.key;
}

} // namespace tarn
