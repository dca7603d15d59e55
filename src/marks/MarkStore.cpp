#include "marks/MarkStore.h"

#include "common/paths.h"
#include "common/stop_flag.h"
#include "common/text.h"
#include "history/Changes.h"
#include "history/History.h"
#include "marks/MarkFiles.h"

#include <algorithm>
#include <chrono>

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr int kLowest = 19;
constexpr std::chrono::milliseconds kTellsEvery(200); // while pictures are read
constexpr std::size_t kPlannedAtOnce = 250;           // what they will be is held in memory

using Clock = std::chrono::steady_clock;

} // namespace

MarkStore::MarkStore(History& history, Answers answers)
    : m_history(history), m_files(history.Disk()), m_aside(m_files), m_answers(std::move(answers)),
      m_reader([this] { Read(); }), m_writer([this] { Write(); }) {}

MarkStore::~MarkStore() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_asked.notify_all();
    m_writer.Join();
    m_reader.Join();
}

void MarkStore::Show(const std::string& folder, std::vector<std::string> names) {
    {
        const std::lock_guard lock(m_mutex);
        m_wanted = {m_wanted.generation + 1, folder, std::move(names)};
        m_isWanted = true;
        m_allRead = false;
    }
    m_asked.notify_all();
}

std::optional<Mark> MarkStore::MarkOf(const std::string& path) const {
    const std::lock_guard lock(m_mutex);
    std::optional<Mark> mark;
    if (FolderOf(path) == m_folder) {
        const auto known = m_known.find(LastPart(path));
        if (known != m_known.end()) mark = known->second.mark;
    }
    for (const KeptMarks* changes : {&m_kept, &m_writing.all, &m_pending.all}) {
        const auto change = changes->find(path);
        if (change != changes->end()) mark = Changed(mark.value_or(Mark()), change->second);
    }
    return mark;
}

bool MarkStore::AllRead() const {
    const std::lock_guard lock(m_mutex);
    return m_allRead;
}

bool MarkStore::AnyMarked(const std::string& folder) const {
    const std::lock_guard lock(m_mutex);
    return (m_anyMarked && folder == m_folder) ||
           std::any_of(m_kept.begin(), m_kept.end(),
                       [&](const auto& kept) { return FolderOf(kept.first) == folder; });
}

std::optional<MarkChange> MarkStore::KeptAside(const std::string& path) const {
    const std::lock_guard lock(m_mutex);
    const auto kept = m_kept.find(path);
    return kept == m_kept.end() ? std::nullopt : std::optional(kept->second);
}

void MarkStore::Queue::Add(MarksSet set) {
    for (const auto& [path, change] : set.changes) all[path] = Joined(all[path], change);
    if (!set.what.empty() || sets.empty() || !sets.back().what.empty()) {
        sets.push_back(std::move(set));
        return;
    }
    for (const auto& [path, change] : set.changes) {
        MarkChange& joined = sets.back().changes[path];
        joined = Joined(joined, change);
    }
}

std::size_t MarkStore::Queue::Count() const {
    std::size_t count = 0;
    for (const MarksSet& set : sets) count += set.changes.size();
    return count;
}

void MarkStore::Set(MarksSet set) {
    {
        const std::lock_guard lock(m_mutex);
        m_pending.Add(std::move(set));
    }
    m_asked.notify_all();
}

std::string MarkStore::CommandToCome() const {
    const std::lock_guard lock(m_mutex);
    for (const Queue* queue : {&m_pending, &m_writing})
        for (auto set = queue->sets.rbegin(); set != queue->sets.rend(); ++set)
            if (!set->what.empty()) return set->what;
    return {};
}

bool MarkStore::Flush(std::optional<std::chrono::milliseconds> atMost) {
    std::unique_lock lock(m_mutex);
    const auto isSettled = [this] {
        return m_isBegun && m_pending.sets.empty() && m_writing.sets.empty();
    };
    if (atMost) return m_settled.wait_for(lock, *atMost, isSettled);
    m_settled.wait(lock, isSettled);
    return true;
}

MarkStore::Unwritten MarkStore::StillUnwritten() const {
    const std::lock_guard lock(m_mutex);
    const std::size_t all = m_pending.Count() + m_writing.Count();
    return {all - std::min(all, m_written.count), m_written.now};
}

void MarkStore::KeepUnwrittenAside() {
    Aside aside;
    {
        const std::lock_guard lock(m_mutex);
        for (const Queue* queue : {&m_writing, &m_pending})
            for (const auto& [path, change] : queue->all) {
                auto& kept = aside[path];
                const auto before = m_kept.find(path);
                if (!kept && before != m_kept.end()) kept = before->second;
                kept = Joined(kept.value_or(MarkChange()), change);
            }
    }
    std::string error;
    if (!m_aside.Keep(aside, &error)) Tell("Marks are NOT kept - " + error);
}

void MarkStore::Tell(const std::string& text) const {
    if (m_answers.told) m_answers.told(text);
}

void MarkStore::TellChanged() const {
    if (m_answers.changed) m_answers.changed();
}

void MarkStore::Read() {
    ::pthread_setname_np(::pthread_self(), "marks-reader");
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), kLowest); // this thread alone
    const HeedsStop heeds(m_ends);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_asked.wait(lock, [this] { return m_ends || m_isWanted; });
        if (m_ends) return;
        m_isWanted = false;
        // What is long is neither copied nor thrown away under the lock.
        const Wanted wanted{m_wanted.generation, m_wanted.folder,
                            std::exchange(m_wanted.names, {})};
        std::unordered_map<std::string, Known> before;
        if (wanted.folder != m_folder) {
            before.swap(m_known);
            m_anyMarked = false;
        }
        m_folder = wanted.folder;
        m_setSince.clear();
        m_sharing.clear();
        lock.unlock();
        before.clear();
        std::string untold; // the marks that are known so far are shown
        const bool read = Guarded(untold, [&] { return ReadFolder(wanted); });
        lock.lock();
        if (wanted.generation != m_wanted.generation) continue;
        TryKeptAgain(wanted.folder);
        m_allRead = read || !untold.empty();
        lock.unlock();
        m_asked.notify_all();
        TellChanged();
        lock.lock();
    }
}

// False when another folder is wanted meanwhile.
bool MarkStore::ReadFolder(const Wanted& wanted) {
    const SidecarNames sidecars =
        SidecarsIn(m_files, wanted.folder, nullptr).value_or(SidecarNames());
    std::vector<const std::string*> without;
    for (const std::string& name : wanted.names) {
        if (sidecars.Of(name).empty())
            without.push_back(&name);
        else if (!ReadOne(wanted, name, sidecars))
            return false;
    }
    TellChanged();
    auto told = Clock::now();
    for (const std::string* name : without) {
        if (!ReadOne(wanted, *name, sidecars)) return false;
        if (Clock::now() - told < kTellsEvery) continue;
        TellChanged();
        told = Clock::now();
    }
    return true;
}

bool MarkStore::ReadOne(const Wanted& wanted, const std::string& name,
                        const SidecarNames& sidecars) {
    const std::string picture = JoinPath(wanted.folder, name);
    const std::string sidecar = sidecars.Of(name);
    const auto look =
        m_files.Look(sidecar.empty() ? picture : JoinPath(wanted.folder, sidecar), nullptr);
    const auto isWanted = [&] { return !m_ends && wanted.generation == m_wanted.generation; };
    {
        const std::lock_guard lock(m_mutex);
        if (!isWanted()) return false;
        if (!sidecar.empty() && FoldCase(sidecar) != FoldCase(OwnSidecarName(name)))
            m_sharing[FoldCase(sidecar)].insert(name);
        if (m_setSince.contains(name)) return true;
        const auto known = m_known.find(name);
        if (known != m_known.end() && look && known->second.look == *look) return true;
    }
    const FoundMark found = ReadMark(m_files, picture, sidecars);
    const std::lock_guard lock(m_mutex);
    if (!isWanted()) return false;
    if (m_setSince.contains(name)) return true;
    m_known[name] = {found.mark, look.value_or(FileLook())};
    m_anyMarked = m_anyMarked || found.mark != Mark();
    return true;
}

// What an earlier run, or an earlier look at this folder, could not write.
void MarkStore::TryKeptAgain(const std::string& folder) {
    for (const auto& [path, change] : m_kept)
        if (FolderOf(path) == folder && !m_pending.all.contains(path) &&
            !m_writing.all.contains(path))
            m_pending.Add({{}, {{path, change}}});
}

void MarkStore::Write() {
    std::string untold; // the rest is written all the same
    KeptMarks kept = Guarded(untold, [this] { return m_aside.Read(); });
    std::unique_lock lock(m_mutex);
    m_kept.merge(kept);
    TryKeptAgain(m_folder);
    m_isBegun = true;
    m_settled.notify_all();
    for (;;) {
        m_asked.wait(lock, [this] { return m_ends || !m_pending.sets.empty(); });
        if (m_pending.sets.empty()) return; // the end, with all written
        m_writing = std::exchange(m_pending, {});
        lock.unlock();
        std::string thrown;
        Guarded(thrown, [this] { return WriteAll(), true; });
        if (!thrown.empty()) Tell("Marks NOT written - " + thrown);
        lock.lock();
        m_writing = {};
        m_written = {};
        lock.unlock();
        TellChanged(); // ahead of whoever waits for it
        lock.lock();
        m_settled.notify_all();
    }
}

// Nothing else changes what is being written. Folders are read once for all of it.
void MarkStore::WriteAll() {
    Folders folders;
    Aside aside;
    for (const MarksSet& set : m_writing.sets) {
        if (!set.what.empty())
            WriteCommand(set, folders, aside);
        else
            for (const auto& [path, change] : set.changes)
                TakeAnswer(path, change, WriteOne(m_files, path, change, folders), aside);
    }
    std::string error;
    if (!m_aside.Keep(aside, &error)) Tell("Marks are NOT kept - " + error);
}

// It belongs to an earlier command: taken back with this one it would be lost.
void MarkStore::WriteKeptFirst(const MarksSet& set, Folders& folders, Aside& aside) {
    KeptMarks kept;
    {
        const std::lock_guard lock(m_mutex);
        for (const auto& [path, change] : set.changes)
            if (const auto at = m_kept.find(path); at != m_kept.end()) kept.insert(*at);
    }
    for (const auto& [path, change] : kept)
        TakeAnswer(path, change, WriteOne(m_files, path, change, folders), aside);
}

// What the history refuses is not kept aside either: it could not be taken back.
void MarkStore::WriteCommand(const MarksSet& set, Folders& folders, Aside& aside) {
    WriteKeptFirst(set, folders, aside);
    Changes changes(m_history, set.what);
    std::vector<WrittenMark> all; // of the set's pictures, in their order
    std::size_t unplanned = 0;    // before the next plan is due
    for (const auto& [path, change] : set.changes) {
        if (unplanned-- == 0 && set.changes.size() > 1) {
            Plan(set, path, folders, changes);
            unplanned = kPlannedAtOnce - 1;
        }
        all.push_back(WriteOne(changes, path, change, folders));
        WrittenMark& written = all.back();
        if (!written.done && !written.isGone && !changes.IsRefused())
            changes.Marked(PlanMark(path, change, folders, changes), &written.error);
        if (!changes.IsRefused()) continue;
        std::string stays; // of those before it
        changes.TakeBack(&stays);
        return Tell("Not marked: " + written.error + (stays.empty() ? "" : "; " + stays));
    }
    changes.Close();
    auto written = all.begin();
    for (const auto& [path, change] : set.changes) TakeAnswer(path, change, *written++, aside);
}

// The sidecars of the next pictures of the set, in one transaction; what cannot be planned is
// written down when it is done.
void MarkStore::Plan(const MarksSet& set, const std::string& from, Folders& folders,
                     Changes& changes) const {
    std::vector<Step> steps;
    std::set<std::string> planned; // several pictures may share one
    std::size_t left = kPlannedAtOnce;
    for (auto at = set.changes.find(from); at != set.changes.end() && left > 0; ++at, --left) {
        const auto& names = NamesIn(folders, at->first);
        if (!names || !m_files.IsWritable(FolderOf(at->first))) {
            steps.push_back(PlanMark(at->first, at->second, folders, changes));
            continue;
        }
        auto sidecar = SidecarWith(m_files, at->first, *names, WithKept(at->first, at->second));
        if (sidecar && planned.insert(sidecar->path).second)
            steps.push_back(changes.PlanWrite(sidecar->path, std::move(sidecar->bytes)));
    }
    std::string ignored; // the first write is refused for the same reason
    changes.Plan(std::move(steps), &ignored);
}

const std::optional<SidecarNames>& MarkStore::NamesIn(Folders& folders,
                                                      const std::string& path) const {
    const std::string folder = FolderOf(path);
    const auto [names, isNew] = folders.try_emplace(folder);
    if (isNew) names->second = SidecarsIn(m_files, folder, nullptr);
    return names->second;
}

WrittenMark MarkStore::WriteOne(Files& files, const std::string& path, const MarkChange& change,
                                Folders& folders) {
    {
        const std::lock_guard lock(m_mutex);
        m_written.now = path;
    }
    const auto& names = NamesIn(folders, path);
    WrittenMark written{false, {}, "the folder cannot be read", true, false};
    if (change == MarkChange())
        written.isGone = true;
    else if (names)
        written = WriteMark(files, path, *names, WithKept(path, change));
    return written;
}

// Of one whose sidecar takes none.
Step MarkStore::PlanMark(const std::string& path, const MarkChange& change, Folders& folders,
                         Changes& changes) const {
    const auto& names = NamesIn(folders, path);
    const Mark read = names ? ReadMark(m_files, path, *names).mark : Mark();
    const Mark before = Changed(read, WithKept(path, {}));
    return changes.PlanMark(path, before, Changed(before, change));
}

// What is kept aside of the file goes into its sidecar, too.
MarkChange MarkStore::WithKept(const std::string& path, const MarkChange& change) const {
    const std::lock_guard lock(m_mutex);
    const auto kept = m_kept.find(path);
    return kept == m_kept.end() ? change : Joined(kept->second, change);
}

void MarkStore::TakeAnswer(const std::string& path, const MarkChange& change,
                           const WrittenMark& written, Aside& aside) {
    {
        const std::lock_guard lock(m_mutex);
        ++m_written.count;
        const auto kept = m_kept.find(path);
        if (written.done || written.isGone) {
            // Its look is not known: the next reading will see.
            if (written.done && FolderOf(path) == m_folder) KnowWritten(LastPart(path), written);
            if (kept != m_kept.end()) m_kept.erase(kept);
            aside[path] = {};
            return;
        }
        MarkChange& keeps = m_kept[path];
        keeps = Joined(keeps, change);
        aside[path] = keeps;
    }
    TellFault(path, written);
}

// Of all that have this sidecar and none of their own; under the lock.
void MarkStore::KnowWritten(const std::string& name, const WrittenMark& written) {
    m_known[name] = {written.mark, {}};
    m_setSince.insert(name);
    m_anyMarked = m_anyMarked || written.mark != Mark();
    const auto sharing = m_sharing.find(FoldCase(written.sidecar));
    const bool isOwn = FoldCase(written.sidecar) == FoldCase(OwnSidecarName(name));
    if (sharing == m_sharing.end() || isOwn) return;
    for (const std::string& other : sharing->second) {
        m_known[other] = {written.mark, {}};
        m_setSince.insert(other);
    }
}

void MarkStore::TellFault(const std::string& path, const WrittenMark& written) {
    const std::string folder = FolderOf(path);
    {
        const std::lock_guard lock(m_mutex);
        if (!m_toldOf.insert(written.ofFolder ? folder : path).second) return;
    }
    if (written.ofFolder)
        return Tell("Marks of '" + folder + "' are kept in the settings: " + written.error);
    Tell("The mark of '" + LastPart(path) +
         "' is kept in the settings, its sidecar stays: " + written.error);
}

} // namespace tarn
