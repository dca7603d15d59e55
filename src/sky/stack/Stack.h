// The sum of a series: frames laid over each other, levelled and averaged, outliers out.
#pragma once

#include "sky/stack/SeriesPlan.h"

#include <functional>
#include <string>
#include <vector>

namespace tarn {

// What a frame counts: all alike; by its noise, which gives the least noise of the sum; or by that
// and its score.
enum class FrameWeights { Alike, Noise, Score };

struct StackOrder {
    double sigmas = 3; // beyond which a sample is left out; 0: none is
    FrameWeights weights = FrameWeights::Noise;
    std::string scratch; // a folder with room for a sixth of the frames' floats
    SeriesWatch watch;
};

struct StackedFrame {
    bool used = false;
    double weight = 0;        // a part of 1 of all
    std::size_t rejected = 0; // pixels of the grid at which a colour of it is left out
    std::string fault;
};

struct StackResult {
    std::vector<StackedFrame> frames; // of the plan's numbers
    std::string fault;                // why there is no sum
    bool cancelled = false;
};

// Where the sum goes: Begin once, then rows, colour by colour, in any order and on any thread. NaN
// where no frame has data.
class SumTarget {
public:
    virtual ~SumTarget() = default;
    virtual bool Begin(int width, int height, int colours) = 0;
    virtual bool Write(int colour, int row, int rows, const float* values) = 0;
};

// In values of the reference. Long series are averaged in parts of some dozens of frames, each of
// which stands for the whole night, so that memory and disk stay bounded.
StackResult StackSeries(const SeriesPlan& plan, const FrameReader& read, const StackOrder& order,
                        SumTarget& target);

} // namespace tarn
