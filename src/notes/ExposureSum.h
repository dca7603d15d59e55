// The exposure calculator's arithmetic: four groups of frames of one length each. Rows 1 to 3 hold
// any numbers; row 4 and the total hold whole seconds of 16 bits.
#pragma once

#include <array>
#include <optional>
#include <string>

namespace tarn {

inline constexpr std::size_t kExposureRows = 4;

// Texts of the boxes.
struct ExposureInput {
    std::string seconds;
    std::string frames;
};

class ExposureSum {
public:
    explicit ExposureSum(const std::array<ExposureInput, kExposureRows>& rows);

    // "1,800 seconds, h:m:s (0:30:00)", or "out of range" for what cannot be held.
    std::string RowText(std::size_t row) const; // 0 to 3
    std::string TotalText() const;              // the same and " Total"

    // "0h 50m 0s  (30 at 60sec.), (10 at 120sec.)"; none when row 4 or the total is out of range.
    std::optional<std::string> FillText() const;

private:
    struct Row {
        double seconds = 0;
        double frames = 0;
        std::optional<double> product = 0; // none: out of range
    };
    std::array<Row, kExposureRows> m_rows;
    std::optional<double> m_total;
};

} // namespace tarn
