#include "sky/series/FrameScale.h"

#include "common/numbers.h"
#include "common/text.h"

#include <cmath>
#include <string_view>

namespace tarn {

namespace {

constexpr double kOfDegree = 3600;   // arc seconds
constexpr double kOfRadian = 206265; // the same
constexpr double kMicrons = 1000;    // in a millimetre

class Cards {
public:
    explicit Cards(const std::vector<std::string>& cards) : m_cards(cards) {}

    std::optional<double> Number(std::string_view word) const {
        constexpr std::size_t kValue = 10; // where it begins
        for (const std::string& card : m_cards) {
            if (card.size() <= kValue || card[kValue - 2] != '=' ||
                Trim(card.substr(0, kValue - 2)) != word)
                continue;
            std::string value = card.substr(kValue, card.find('/') - kValue);
            if (value.find('\'') != std::string::npos) // some write numbers as texts
                std::erase(value, '\'');
            return ParseNumber(Trim(value));
        }
        return std::nullopt;
    }
    double Or0(std::string_view word) const { return Number(word).value_or(0); }

private:
    const std::vector<std::string>& m_cards;
};

} // namespace

std::optional<double> ScaleOf(const std::vector<std::string>& cards) {
    const Cards header(cards);
    const double area =
        header.Or0("CD1_1") * header.Or0("CD2_2") - header.Or0("CD1_2") * header.Or0("CD2_1");
    double scale = kOfDegree * std::sqrt(std::abs(area));
    if (scale == 0 && header.Or0("CDELT2") != 0) scale = kOfDegree * std::abs(header.Or0("CDELT2"));
    for (const char* word : {"PIXSCALE", "SECPIX"})
        if (scale == 0) scale = header.Or0(word);
    const double focal = header.Or0("FOCALLEN");
    for (const char* word : {"XPIXSZ", "PIXSIZE1"})
        if (scale == 0 && focal > 0) scale = kOfRadian * header.Or0(word) / kMicrons / focal;
    constexpr double kLeast = 0.001; // of any telescope
    constexpr double kMost = 3600;   // of any lens
    if (scale >= kLeast && scale <= kMost) return scale;
    return std::nullopt;
}

} // namespace tarn
