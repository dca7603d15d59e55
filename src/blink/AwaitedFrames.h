// Files until all of them are measured, by the room that measures.
#pragma once

#include "desk/Context.h"
#include "sky/judging/JudgedFrame.h"

#include <functional>
#include <string>
#include <vector>

namespace tarn {

class AwaitedFrames {
public:
    explicit AwaitedFrames(Context& context) : m(context) {}
    ~AwaitedFrames() = default;
    AwaitedFrames(const AwaitedFrames&) = delete;
    AwaitedFrames& operator=(const AwaitedFrames&) = delete;

    void Begin(std::vector<std::string> paths); // may answer at once
    void GiveUp();
    void FramesChanged(); // more is known
    const std::vector<std::string>& Paths() const { return m_paths; }

    // One of each path; `left` has a reason where there are no measures.
    struct Known {
        std::vector<JudgedFrame> frames;
        std::vector<FrameMeasures> measures;
        std::vector<std::string> left;
    };
    std::function<void(Known known)> onKnown;
    std::function<void(const std::string& said)> onWaiting; // "Measuring: 12 of 300"

private:
    Known Take();

    Context& m;
    std::vector<std::string> m_paths;
    bool m_isWaiting = false;
};

} // namespace tarn
