#include "clips/LateFrames.h"

#include "common/stop_flag.h"

#include <atomic>
#include <condition_variable>
#include <list>
#include <mutex>
#include <utility>

namespace tarn {

struct LateFrames::State {
    std::unique_ptr<FrameReader> reader;
    std::atomic<bool> ends = false;
    std::mutex mutex; // of all below
    std::condition_variable changed;
    std::optional<int> asked;
    std::optional<Answer> answer;
    bool hasEnded = false;
};

LateFrames::LateFrames(std::unique_ptr<FrameReader> reader) : m_state(std::make_shared<State>()) {
    m_state->reader = std::move(reader);
    m_worker = Worker([state = m_state] { Work(*state); });
}

// A thread that still waits for its disk is left to itself, and to the end of the program.
LateFrames::~LateFrames() {
    using Left = std::pair<std::shared_ptr<State>, Worker>;
    static auto& left = *new std::list<Left>(); // a thread cannot be put into another's place
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->ends = true;
    }
    m_state->changed.notify_all();
    left.emplace_back(std::move(m_state), std::move(m_worker));
    left.remove_if([](const Left& each) {
        const std::lock_guard lock(each.first->mutex);
        return each.first->hasEnded;
    });
}

void LateFrames::Ask(int what) {
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->asked = what;
    }
    m_state->changed.notify_all();
}

std::optional<LateFrames::Answer> LateFrames::Take(std::chrono::milliseconds wait) {
    std::unique_lock lock(m_state->mutex);
    m_state->changed.wait_for(lock, wait, [this] { return m_state->answer.has_value(); });
    return std::exchange(m_state->answer, {});
}

LateFrames::Answer LateFrames::Read(FrameReader& reader, int what) {
    Answer answer;
    answer.what = what;
    std::string thrown;
    Guarded(thrown, [&] {
        if (what == kOpen)
            answer.error = reader.Open(answer.facts);
        else if (what == kTimes)
            answer.times = reader.Times();
        else
            answer.picture = reader.Frame(what, answer.error);
        return true;
    });
    if (!thrown.empty()) answer.error = thrown;
    return answer;
}

void LateFrames::Work(State& state) {
    const HeedsStop heeds(state.ends);
    std::unique_lock lock(state.mutex);
    for (;;) {
        state.changed.wait(lock, [&] { return state.ends || state.asked; });
        if (state.ends) break;
        const int what = *std::exchange(state.asked, {});
        lock.unlock();
        Answer answer = Read(*state.reader, what);
        lock.lock();
        state.answer = std::move(answer);
        state.changed.notify_all();
    }
    lock.unlock();
    state.reader.reset(); // a slow disk may hold this up, too
    lock.lock();
    state.answer.reset();
    state.hasEnded = true;
}

} // namespace tarn
