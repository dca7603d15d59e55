#include "marks/MarkStore.h"

#include "common/paths.h"
#include "common/stop_flag.h"
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

using Clock = std::chrono::steady_clock;

} // namespace

MarkStore::MarkStore(Files& files, Answers answers)
    : m_files(files), m_aside(files), m_answers(std::move(answers)), m_reader([this] { Read(); }),
      m_writer([this] { Write(); }) {}

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
    for (const Changes* changes : {&m_kept, &m_writing, &m_pending}) {
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

void MarkStore::Set(const std::string& path, const MarkChange& change) {
    {
        const std::lock_guard lock(m_mutex);
        MarkChange& pending = m_pending[path];
        pending = Joined(pending, change);
    }
    m_asked.notify_all();
}

bool MarkStore::Flush(std::optional<std::chrono::milliseconds> atMost) {
    std::unique_lock lock(m_mutex);
    const auto isSettled = [this] { return m_isBegun && m_pending.empty() && m_writing.empty(); };
    if (atMost) return m_settled.wait_for(lock, *atMost, isSettled);
    m_settled.wait(lock, isSettled);
    return true;
}

MarkStore::Unwritten MarkStore::StillUnwritten() const {
    const std::lock_guard lock(m_mutex);
    return {m_pending.size() + m_writing.size() - m_written.count, m_written.now};
}

void MarkStore::KeepUnwrittenAside() {
    std::map<std::string, std::optional<MarkChange>> aside;
    {
        const std::lock_guard lock(m_mutex);
        for (const Changes* changes : {&m_writing, &m_pending})
            for (const auto& [path, change] : *changes) {
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
        if (FolderOf(path) == folder) m_pending.try_emplace(path, change);
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
        m_asked.wait(lock, [this] { return m_ends || !m_pending.empty(); });
        if (m_pending.empty()) return; // the end, with all written
        m_writing = std::exchange(m_pending, {});
        lock.unlock();
        std::string thrown;
        Guarded(thrown, [this] { return WriteAll(), true; });
        if (!thrown.empty()) Tell("Marks NOT written - " + thrown);
        TellChanged();
        lock.lock();
        m_writing.clear();
        m_written = {};
        m_settled.notify_all();
    }
}

// Nothing else changes what is being written. Folders are read once for all of it.
void MarkStore::WriteAll() {
    std::map<std::string, std::optional<SidecarNames>> folders;
    std::map<std::string, std::optional<MarkChange>> aside;
    for (const auto& [path, change] : m_writing) {
        const std::string folder = FolderOf(path);
        {
            const std::lock_guard lock(m_mutex);
            m_written.now = path;
        }
        const auto [names, isNew] = folders.try_emplace(folder);
        WrittenMark written{false, {}, "the folder cannot be read", true, false};
        if (isNew) names->second = SidecarsIn(m_files, folder, nullptr);
        if (change == MarkChange())
            written.isGone = true;
        else if (names->second)
            written = WriteMark(m_files, path, *names->second, WithKept(path, change));
        TakeAnswer(path, change, written, aside);
    }
    std::string error;
    if (!m_aside.Keep(aside, &error)) Tell("Marks are NOT kept - " + error);
}

// What is kept aside of the file goes into its sidecar, too.
MarkChange MarkStore::WithKept(const std::string& path, const MarkChange& change) const {
    const std::lock_guard lock(m_mutex);
    const auto kept = m_kept.find(path);
    return kept == m_kept.end() ? change : Joined(kept->second, change);
}

void MarkStore::TakeAnswer(const std::string& path, const MarkChange& change,
                           const WrittenMark& written,
                           std::map<std::string, std::optional<MarkChange>>& aside) {
    {
        const std::lock_guard lock(m_mutex);
        ++m_written.count;
        const auto kept = m_kept.find(path);
        if (written.done || written.isGone) {
            // Its look is not known: the next reading will see.
            if (written.done && FolderOf(path) == m_folder) {
                m_known[LastPart(path)] = {written.mark, {}};
                m_setSince.insert(LastPart(path));
                m_anyMarked = m_anyMarked || written.mark != Mark();
            }
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
