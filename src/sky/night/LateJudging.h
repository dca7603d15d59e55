// Frames judged on a thread of its own: laying hundreds over each other takes seconds.
#pragma once

#include "common/worker.h"
#include "sky/judging/Judging.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

namespace tarn {

class LateJudging {
public:
    // `told` is called on the thread of this one, when frames have been judged.
    explicit LateJudging(std::function<void()> told);
    ~LateJudging();
    LateJudging(const LateJudging&) = delete;
    LateJudging& operator=(const LateJudging&) = delete;

    // These next; what was asked before and is not begun is given up. `ticket` comes back with
    // the answer.
    void Ask(int ticket, std::vector<FrameMeasures> frames);
    bool IsBusy() const;

    struct Answer {
        int ticket = 0;
        JudgedFrames judged;
    };
    std::optional<Answer> Take();

private:
    void Work();

    const std::function<void()> m_told;
    mutable std::mutex m_mutex; // of all below
    std::condition_variable m_changed;
    bool m_ends = false;
    bool m_works = false;
    int m_ticket = 0;
    std::optional<std::vector<FrameMeasures>> m_asked;
    std::optional<Answer> m_answer;
    Worker m_worker; // last: it uses all above
};

} // namespace tarn
