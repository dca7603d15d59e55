// Thumbnails of many pictures: which ones, made on worker threads, written in the order of the
// list by the thread that steps.
#pragma once

#include "common/worker.h"
#include "desk/commands/Outcome.h"
#include "platform/Files.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace tarn {

// What is asked for.
struct ThumbRequest {
    std::string pictures;  // folder of the originals
    std::string subFolder; // name below it, one that ThumbnailFolder has let through
    int width = 120;       // pixels
    int quality = 75;      // 1 to 100
    std::string notes;     // folder for the notes of thumbnails; empty: none are written
    // The text of a picture's note; rung by the stepping thread.
    std::function<std::string(const std::string& picture)> noteOf;
};

// One thumbnail to make: the row of the list and the name of its picture.
struct ThumbJob {
    int row = 0;
    std::string name;
};

// The rows that are pictures by their names. With `updateOnly` those whose thumbnail stands already
// are left out, whatever their age.
struct ListTypes {
    std::string videos; // patterns as of the list
    std::string web;
};
std::vector<ThumbJob> PlanThumbnails(const std::vector<std::string>& names, const ListTypes& types,
                                     const ThumbRequest& request, bool updateOnly,
                                     const Files& files);

struct ThumbCounts {
    int made = 0;
    int failed = 0;
    int failedNotes = 0;
    std::vector<FileFault> faults;     // pictures
    std::vector<FileFault> damages;    // pictures of which a part alone could be made small
    std::vector<FileFault> noteFaults; // notes of thumbnails
};

class ThumbRun {
public:
    ThumbRun(std::vector<ThumbJob> jobs, ThumbRequest request, Files& files);
    ~ThumbRun(); // breaks the pictures in work off
    ThumbRun(const ThumbRun&) = delete;
    ThumbRun& operator=(const ThumbRun&) = delete;

    bool Done() const { return m_next == m_jobs.size(); }
    const ThumbJob& Next() const { return m_jobs[m_next]; }

    // Until the next thumbnail can be written, at most this long. False when it is still in work.
    bool WaitForNext(std::chrono::milliseconds most);

    // Writes the next thumbnail, and its note; waits for it if need be. False when it failed, which
    // Fault explains; a thumbnail of what could be read of a damaged file has a Fault, too.
    bool Step();
    const std::string& Fault() const { return m_fault; }

    // "Generating thumbnail 3 ...\thumbnails\T120_m31.jpg": of the one written last.
    const std::string& Progress() const { return m_progress; }

    const ThumbCounts& Counts() const { return m_counts; }

    std::vector<FileFault> Faults() const; // pictures first, then notes

    // What the message line says at the end.
    std::string Report(bool cancelled) const;

private:
    struct Made {
        bool ready = false;
        std::string jpeg;
        std::string error;
    };

    void Work();
    Made TakeNext();
    bool WriteOwn(const std::string& path, const std::string& bytes, std::string* error);
    void WriteNote(const std::string& name);

    const std::vector<ThumbJob> m_jobs;
    const ThumbRequest m_request;
    Files& m_files;
    const std::string m_folder;
    ThumbCounts m_counts;
    std::string m_progress;
    std::string m_fault;

    std::mutex m_mutex; // guards the rest; m_next is written by the stepping thread alone
    std::condition_variable m_changed;
    std::vector<Made> m_made;
    std::size_t m_next = 0;    // to be written
    std::size_t m_toBegin = 0; // to be taken up by a worker
    std::atomic<bool> m_ends = false;
    std::vector<Worker> m_workers;
};

} // namespace tarn
