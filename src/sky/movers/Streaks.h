// Short trails that fast movers draw while a frame is exposed.
#pragma once

#include "sky/movers/Differences.h"
#include "sky/movers/Field.h"

#include <vector>

namespace tarn {

// Of its length, by which the middle of such a source may be off.
inline constexpr double kBlurOfLength = 0.09;

// In a difference that is blurred by its stars' width: sums along lines of a few lengths up to
// `longest`, in all directions.
class StreakSearch {
public:
    StreakSearch(const Field& difference, double sigma, double longest);

    // Adds those between two rows, which count from `first` on in the grid.
    void Find(int begin, int end, int first, std::vector<NewSource>& found);

private:
    struct Line {
        double length;
        std::vector<std::pair<int, int>> steps; // from its middle
    };
    void MakeLines(double sigma, double longest);
    void Sum(const Line& line);
    float NoiseOfSums();

    int m_width; // every second sample along both directions: the blur leaves no more
    int m_height;
    std::vector<float> m_values;
    std::vector<Line> m_lines;
    std::vector<float> m_sums;
    std::vector<float> m_best;   // the highest signal of a place
    std::vector<float> m_length; // and of which line it is
    std::vector<float> m_some;
};

} // namespace tarn
