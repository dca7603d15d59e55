// What stood in the sky when single files were taken, on a thread of its own; the last one asked
// for is what counts. The headers of its whole folder are read once: which way longitudes count is
// one thing for all of them.
#pragma once

#include "common/worker.h"
#include "sky/night/KeptMeasures.h"
#include "sky/place/SiteList.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

struct SkyOfFile {
    std::string path;
    std::vector<std::string> lines; // of the panel
};

class LateSky {
public:
    // `told` is called on the thread of this one.
    explicit LateSky(std::function<void()> told);
    ~LateSky();
    LateSky(const LateSky&) = delete;
    LateSky& operator=(const LateSky&) = delete;

    struct Wish {
        std::string path;
        std::vector<std::string> beside;    // the files of its folder
        std::optional<NamedSite> otherwise; // where its header has no site
    };
    void Ask(Wish wish);             // without a path: none any more
    std::optional<SkyOfFile> Take(); // of the last that was asked for

private:
    void Work();
    std::vector<std::string> LinesFor(const Wish& wish);

    const std::function<void()> m_told;
    mutable std::mutex m_mutex; // of all below but the last
    std::condition_variable m_changed;
    bool m_ends = false;
    bool m_isAsked = false; // and not begun
    Wish m_asked;
    std::optional<SkyOfFile> m_answer;

    // Of the thread alone: what the headers of a folder have shown.
    std::vector<std::string> m_known;
    bool m_countsWest = false;
    std::string m_said;
    std::unique_ptr<KeptMeasures> m_measures;
    Worker m_worker; // last: it uses all above
};

} // namespace tarn
