// Frames of one clip read on a thread of its own, so that a slow disk holds nobody up: what was
// asked for last is read next, what is asked no more is passed over.
#pragma once

#include "clips/FrameTimes.h"
#include "common/worker.h"

#include <QImage>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

// Used on that thread alone.
class FrameReader {
public:
    virtual ~FrameReader() = default;
    virtual std::string Open(ClipFacts& facts) = 0; // all but the times; an error text
    virtual std::vector<double> Times() = 0;        // seconds of each frame; empty: none are known
    virtual QImage Frame(int frame, std::string& error) = 0;
};

class LateFrames {
public:
    explicit LateFrames(std::unique_ptr<FrameReader> reader);
    ~LateFrames(); // waits for no disk
    LateFrames(const LateFrames&) = delete;
    LateFrames& operator=(const LateFrames&) = delete;

    // A frame from 0, or one of these.
    static constexpr int kOpen = -1;
    static constexpr int kTimes = -2;
    void Ask(int what);

    struct Answer {
        int what = 0;
        std::string error;
        ClipFacts facts;
        std::vector<double> times;
        QImage picture;
    };
    // The last one that has come; waits so long for it.
    std::optional<Answer> Take(std::chrono::milliseconds wait);

private:
    struct State;
    static void Work(State& state);
    static Answer Read(FrameReader& reader, int what);

    std::shared_ptr<State> m_state;
    Worker m_worker;
};

} // namespace tarn
