// The marks of many files: read and written by threads of their own, so that whoever asks or sets
// them waits for no disk. No toolkit.
#pragma once

#include "common/worker.h"
#include "marks/MarksAside.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tarn {

class Changes;
class History;
class SidecarNames;
struct Step;
struct WrittenMark;

// Marks that are set together.
struct MarksSet {
    std::string what; // as the history says it; empty: it is no command of its own
    std::map<std::string, MarkChange> changes; // by path
};

class MarkStore {
public:
    // Called on the store's threads.
    struct Answers {
        std::function<void()> changed; // marks have come or changed
        // What could not be written and why: once a file, of a folder once.
        std::function<void(const std::string& text)> told;
    };
    MarkStore(History& history, Answers answers);
    ~MarkStore(); // what is set is written first
    MarkStore(const MarkStore&) = delete;
    MarkStore& operator=(const MarkStore&) = delete;

    // The files of a folder, whose marks are read from now on: those with a sidecar first, the rest
    // in this order. Of the same folder again what is known stays, as far as its files have not
    // changed.
    void Show(const std::string& folder, std::vector<std::string> names);

    // With what is still to be written. None: not read yet, or of another folder.
    std::optional<Mark> MarkOf(const std::string& path) const;
    bool AllRead() const;
    bool AnyMarked(const std::string& folder) const; // as far as it is known
    std::optional<MarkChange> KeptAside(const std::string& path) const;

    // A change of nothing: what is kept aside of it is dropped.
    void Set(MarksSet set);
    void Set(const std::string& path, const MarkChange& change) { Set({{}, {{path, change}}}); }

    // What the last command says of those that are not yet written; empty: there is none.
    std::string CommandToCome() const;

    // Waits until all that is set is on the disk or kept aside; false: it has taken too long.
    bool Flush(std::optional<std::chrono::milliseconds> atMost = {});
    struct Unwritten {
        std::size_t count = 0;
        std::string now; // the picture whose sidecar is being written
    };
    Unwritten StillUnwritten() const;
    // Once more into the state folder, in case the disk never answers.
    void KeepUnwrittenAside();

private:
    struct Known {
        Mark mark;
        FileLook look; // of its sidecar, or of itself where there is none
    };
    struct Wanted { // of the reader
        int generation = 0;
        std::string folder;
        std::vector<std::string> names;
    };
    struct Queue { // in the order of setting
        std::deque<MarksSet> sets;
        std::map<std::string, MarkChange> all; // joined

        void Add(MarksSet set);
        std::size_t Count() const;
    };
    using Folders = std::map<std::string, std::optional<SidecarNames>>; // each read once
    using Aside = std::map<std::string, std::optional<MarkChange>>;

    void Read();
    bool ReadFolder(const Wanted& wanted);
    bool ReadOne(const Wanted& wanted, const std::string& name, const SidecarNames& sidecars);
    void TryKeptAgain(const std::string& folder); // under the lock

    void Write();
    void WriteAll();
    void WriteKeptFirst(const MarksSet& set, Folders& folders, Aside& aside);
    void WriteCommand(const MarksSet& set, Folders& folders, Aside& aside);
    void Plan(const MarksSet& set, const std::string& from, Folders& folders,
              Changes& changes) const;
    const std::optional<SidecarNames>& NamesIn(Folders& folders, const std::string& path) const;
    WrittenMark WriteOne(Files& files, const std::string& path, const MarkChange& change,
                         Folders& folders);
    MarkChange WithKept(const std::string& path, const MarkChange& change) const;
    Step PlanMark(const std::string& path, const MarkChange& change, Folders& folders,
                  Changes& changes) const;
    void TakeAnswer(const std::string& path, const MarkChange& change, const WrittenMark& written,
                    Aside& aside);
    void KnowWritten(const std::string& name, const WrittenMark& written);
    void TellFault(const std::string& path, const WrittenMark& written);
    void Tell(const std::string& text) const;
    void TellChanged() const;

    History& m_history;
    Files& m_files;
    MarksAside m_aside;
    const Answers m_answers;

    mutable std::mutex m_mutex; // of all below
    std::condition_variable m_asked;
    std::condition_variable m_settled;
    std::atomic<bool> m_ends = false;
    Wanted m_wanted;
    bool m_isWanted = false;                        // and not begun
    bool m_allRead = true;                          // nothing is shown yet
    bool m_anyMarked = false;                       // of what is known
    std::string m_folder;                           // of what is known
    std::unordered_map<std::string, Known> m_known; // by name
    // The names that have a sidecar in common, by its folded name.
    std::unordered_map<std::string, std::set<std::string>> m_sharing;
    std::unordered_set<std::string> m_setSince; // names written since their reading began
    Queue m_pending;
    Queue m_writing;
    Unwritten m_written;            // of those
    KeptMarks m_kept;               // aside
    bool m_isBegun = false;         // what an earlier run kept is among them
    std::set<std::string> m_toldOf; // folders and files

    Worker m_reader; // last: they use all above
    Worker m_writer;
};

} // namespace tarn
