#include "console/SiteOption.h"

#include "common/numbers.h"
#include "common/text.h"

#include <cmath>
#include <vector>

namespace tarn {

std::optional<Site> ParseSite(const std::string& text, std::string& fault) {
    constexpr double kLowest = -500; // metres
    constexpr double kHighest = 9000;
    const std::vector<std::string> parts = Split(text, ',');
    std::vector<double> numbers;
    for (const std::string& part : parts)
        if (const auto number = ParseNumber(part)) numbers.push_back(*number);
    if (numbers.size() == 2 && parts.size() == 2) numbers.push_back(0);
    if (numbers.size() == 3 && parts.size() <= 3 && std::abs(numbers[0]) <= 90 &&
        std::abs(numbers[1]) <= 180 && numbers[2] >= kLowest && numbers[2] <= kHighest)
        return Site{numbers[0], numbers[1], numbers[2]};
    fault = "--site takes latitude, longitude (east positive) and height, as 48.1,11.5,520";
    return std::nullopt;
}

} // namespace tarn
