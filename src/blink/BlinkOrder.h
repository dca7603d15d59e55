// In which order the frames of a blink follow each other.
#pragma once

#include "common/mark.h"
#include "sky/stars/FrameMeasures.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

// A place to look at first, in pixels of one of the files.
struct BlinkPlace {
    std::string path;
    double x = 0;
    double y = 0;
};

struct BlinkFrame {
    std::string path;
    std::string name;
    std::optional<std::int64_t> taken; // by the camera's clock
    double hfr = kNotMeasured;
    double score = kNotMeasured;
    Mark mark;
    bool isUnread = false; // its file cannot be read: it is passed over
};

enum class BlinkWay { Forward, Back, ToAndFro };

// Positions are places in the order, from 0.
class BlinkOrder {
public:
    // Frames by time, or by score with the best first; without these as they came. Rejected ones
    // are passed over where that is wished, unless all are. There is none only without frames.
    void Arrange(const std::vector<BlinkFrame>& frames, bool byScore, bool skipRejected);

    std::size_t Count() const { return m_order.size(); }
    bool IsEmpty() const { return m_order.empty(); }
    const std::vector<std::size_t>& Frames() const { return m_order; }

    std::size_t Position() const { return m_position; }
    std::size_t Current() const { return m_order[m_position]; } // a frame
    // Where the frame stands, or else where it would stand.
    void GoTo(std::size_t frame);

    // By hand: round the ends.
    void Step(int by);

    // The next one in the way of play that `isMade`; stays where none is. With `waits` only the
    // very next one comes into question. False where it stays.
    bool Advance(const std::function<bool(std::size_t frame)>& isMade, bool waits);

    BlinkWay Way() const { return m_way; }
    void SetWay(BlinkWay way);

    // All frames, the current one first, then as they will be shown.
    std::vector<std::size_t> Ahead() const;

private:
    std::size_t Next(std::size_t position, bool& back) const;

    std::vector<std::size_t> m_order;
    std::vector<std::size_t> m_ranks; // of all frames, also those that are passed over
    std::size_t m_position = 0;
    BlinkWay m_way = BlinkWay::Forward;
    bool m_back = false; // on the way back, to and fro
};

} // namespace tarn
