// The marks of many files: read and written by threads of their own, so that whoever asks or sets
// them waits for no disk. No toolkit.
#pragma once

#include "common/worker.h"
#include "marks/MarksAside.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tarn {

class SidecarNames;
struct WrittenMark;

class MarkStore {
public:
    // Called on the store's threads.
    struct Answers {
        std::function<void()> changed; // marks have come or changed
        // What could not be written and why: once a file, of a folder once.
        std::function<void(const std::string& text)> told;
    };
    MarkStore(Files& files, Answers answers);
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
    void Set(const std::string& path, const MarkChange& change);

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
    using Changes = std::map<std::string, MarkChange>; // by path

    void Read();
    bool ReadFolder(const Wanted& wanted);
    bool ReadOne(const Wanted& wanted, const std::string& name, const SidecarNames& sidecars);
    void TryKeptAgain(const std::string& folder); // under the lock

    void Write();
    void WriteAll();
    MarkChange WithKept(const std::string& path, const MarkChange& change) const;
    void TakeAnswer(const std::string& path, const MarkChange& change, const WrittenMark& written,
                    std::map<std::string, std::optional<MarkChange>>& aside);
    void TellFault(const std::string& path, const WrittenMark& written);
    void Tell(const std::string& text) const;
    void TellChanged() const;

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
    std::unordered_set<std::string> m_setSince;     // names written since their reading began
    Changes m_pending;
    Changes m_writing;
    Unwritten m_written;            // of those
    KeptMarks m_kept;               // aside
    bool m_isBegun = false;         // what an earlier run kept is among them
    std::set<std::string> m_toldOf; // folders and files

    Worker m_reader; // last: they use all above
    Worker m_writer;
};

} // namespace tarn
