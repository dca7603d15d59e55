#include "sky/series/SumCards.h"

#include "common/numbers.h"
#include "common/paths.h"
#include "common/text.h"
#include "imaging/fits/KeptCards.h"
#include "imaging/fits/SkyFile.h"
#include "sky/headers/FrameHeader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

namespace tarn {

namespace {

void AddMap(FitsCards& cards, const FrameMap& map) {
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "  a %.9f b %.9f c %.4f", map.a, map.b, map.c);
    cards.AddHistory(text.data());
    std::snprintf(text.data(), text.size(), "  d %.9f e %.9f f %.4f", map.d, map.e, map.f);
    cards.AddHistory(text.data());
}

// What the frames' headers say of their times, as far as they do; seconds since 1970.
struct Exposures {
    double seconds = 0; // of all
    std::optional<double> begin;
    std::optional<double> end;
    std::optional<double> middle; // of the light that the sum has of each
};
Exposures ExposuresOf(const std::vector<std::string>& paths, const SeriesPlan& plan,
                      const StackResult& result) {
    Exposures all;
    double middles = 0;
    double weights = 0;
    for (const SeriesFrame& frame : plan.frames) {
        const StackedFrame& used = result.frames[frame.number];
        if (!used.used) continue;
        const ExposureTime time = ReadFrameHeader(paths[frame.number], {}).where.time;
        const double seconds = time.exposure.value_or(0);
        all.seconds += seconds;
        if (!time.start || !time.middle) continue;
        all.begin = std::min(*time.start, all.begin.value_or(*time.start));
        all.end = std::max(*time.start + seconds, all.end.value_or(*time.start));
        middles += used.weight * *time.middle;
        weights += used.weight;
    }
    if (weights > 0) all.middle = middles / weights;
    return all;
}

void AddDate(FitsCards& cards, const char* word, const std::optional<double>& seconds,
             const char* comment) {
    constexpr double kFarthest = 1e11; // from 1970
    if (!seconds || !(std::abs(*seconds) < kFarthest)) return;
    std::string text = UtcText(*seconds);
    if (EndsWith(text, "Z")) text.pop_back(); // the header's dates have none
    cards.Add(word, std::string_view(text), comment);
}

// Degrees and sixty-parts have words of their own.
void AddPlace(FitsCards& cards, const char* degrees, const char* parts, const std::string& value) {
    if (value.empty()) return;
    if (const auto number = ParseNumber(value))
        cards.Add(degrees, *number, "degrees");
    else
        cards.Add(parts, std::string_view(value));
}

// The header's place in the sky, by words, where its cards cannot be had. All but FITS files begin
// with their top row.
void AddWords(FitsCards& cards, const std::optional<FitsHeader>& header) {
    if (!header || header->topDown) cards.Add("ROWORDER", std::string_view("TOP-DOWN"));
    if (!header) return;
    const std::array<std::pair<const char*, const std::string*>, 4> words{
        {{"OBJECT", &header->object},
         {"FILTER", &header->filter},
         {"TELESCOP", &header->telescope},
         {"INSTRUME", &header->camera}}};
    for (const auto& [word, value] : words)
        if (!value->empty()) cards.Add(word, std::string_view(*value));
    AddPlace(cards, "RA", "OBJCTRA", header->rightAscension);
    AddPlace(cards, "DEC", "OBJCTDEC", header->declination);
}

} // namespace

std::size_t CountOfSum(const StackResult& result) {
    return std::size_t(std::count_if(result.frames.begin(), result.frames.end(),
                                     [](const StackedFrame& frame) { return frame.used; }));
}

FitsCards CardsOfSum(const std::vector<std::string>& paths, const SeriesPlan& plan,
                     const StackResult& result) {
    FitsCards cards;
    const std::string& reference = paths[*plan.reference];
    std::string error;
    const auto header = ReadSkyHeader(reference, error);
    const std::vector<std::string> kept = CardsOfFrame(reference, header ? header->image : 0);
    for (const std::string& card : kept) cards.AddWhole(card);
    if (kept.empty()) AddWords(cards, header);
    const Exposures times = ExposuresOf(paths, plan, result);
    cards.Add("TIMESYS", std::string_view("UTC"));
    AddDate(cards, "DATE-OBS", times.begin, "UTC, beginning of the first frame");
    AddDate(cards, "DATE-END", times.end, "UTC, end of the last one");
    AddDate(cards, "DATE-AVG", times.middle, "UTC, mean of their middles by weight");
    cards.Add("NCOMBINE", static_cast<long long>(CountOfSum(result)), "frames in the mean");
    if (times.seconds > 0) cards.Add("TOTALEXP", times.seconds, "seconds of all frames");
    cards.Add("CREATOR", kCreator);
    cards.AddHistory("Mean of the frames below, in the grid, light and sky of " +
                     LastPart(reference));
    cards.AddHistory("A point (x, y) stands at (a x + b y + c, d x + e y + f), from (0, 0)");
    for (const SeriesFrame& frame : plan.frames) {
        const StackedFrame& used = result.frames[frame.number];
        if (!used.used) continue;
        std::array<char, 32> weight{};
        std::snprintf(weight.data(), weight.size(), "%.6g", used.weight);
        cards.AddHistory(LastPart(paths[frame.number]) + ", weight " + weight.data());
        AddMap(cards, frame.map);
    }
    return cards;
}

} // namespace tarn
