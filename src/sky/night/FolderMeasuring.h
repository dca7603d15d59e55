// The frames of a folder measured in the background, those nearest to the current file first. What
// was measured before comes from the store, which one thread owns; the others measure what is
// missing, with the lowest priority of the machine.
#pragma once

#include "common/file_look.h"
#include "common/worker.h"
#include "sky/stars/FrameMeasures.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

struct MeasuredFile {
    std::string path;
    FileLook look; // at the file that was measured
    // Seconds since 1970, as the camera's clock had it.
    std::optional<std::int64_t> taken;
    FrameMeasures measures;
};

struct MeasuringProgress {
    std::size_t done = 0;
    std::size_t total = 0;
    bool cancelled = false;

    bool IsDone() const { return done == total; }
};

class FolderMeasuring {
public:
    // `told` is called on threads of this one's, once files are done.
    FolderMeasuring(std::string storeFile, std::function<void()> told, int threads = kThreads);
    ~FolderMeasuring();
    FolderMeasuring(const FolderMeasuring&) = delete;
    FolderMeasuring& operator=(const FolderMeasuring&) = delete;

    static constexpr int kThreads = 2;

    // These files from now on; all others are given up, and what is still to come of them is
    // dropped.
    void Show(std::vector<std::string> paths);

    // The file that others lie around.
    void Prefer(const std::string& path);

    // What is not begun is not measured, until the next Show or Resume.
    void Cancel();
    void Resume();

    // What has come since the last call, of the files shown.
    std::vector<MeasuredFile> Take();

    MeasuringProgress Progress() const;

private:
    enum class Stage { Asked, Missing, InWork, Done };
    struct Wanted {
        MeasuredFile file;
        Stage stage = Stage::Asked;
    };

    std::optional<std::size_t> Nearest(Stage stage) const;
    void Keep(const std::string& storeFile);
    void Measure();
    void Answer(int generation, std::size_t index, MeasuredFile file);

    const std::function<void()> m_told;

    mutable std::mutex m_mutex; // of all below
    std::condition_variable m_changed;
    std::atomic<bool> m_ends = false;
    int m_generation = 0;
    std::vector<Wanted> m_wanted;
    std::size_t m_preferred = 0;
    std::size_t m_done = 0;
    bool m_cancelled = false;
    bool m_looksForGone = false; // in the store, once all files have been asked for
    std::vector<MeasuredFile> m_answers;
    std::deque<MeasuredFile> m_toKeep;

    Worker m_keeper; // these last: they use all above
    std::vector<Worker> m_measurers;
};

} // namespace tarn
