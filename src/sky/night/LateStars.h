// The stars of single files, listed on a thread of its own; the last one asked for is what counts.
#pragma once

#include "common/file_look.h"
#include "common/worker.h"
#include "sky/planes/MeasurePicture.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

namespace tarn {

struct StarsOfFile {
    std::string path;
    FileLook look; // at the file that was read
    ListedStars listed;
};

class LateStars {
public:
    // `told` is called on the thread of this one.
    explicit LateStars(std::function<void()> told);
    ~LateStars();
    LateStars(const LateStars&) = delete;
    LateStars& operator=(const LateStars&) = delete;

    void Ask(const std::string& path); // empty: none any more
    std::optional<StarsOfFile> Take(); // of the last that was asked for

private:
    void Work();

    const std::function<void()> m_told;
    mutable std::mutex m_mutex; // of all below
    std::condition_variable m_changed;
    std::atomic<bool> m_ends = false;
    std::string m_asked;
    bool m_isAsked = false; // and not begun
    std::optional<StarsOfFile> m_answer;
    Worker m_worker; // last: it uses all above
};

} // namespace tarn
