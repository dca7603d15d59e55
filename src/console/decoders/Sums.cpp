#include "console/decoders/Sums.h"

#include "common/numbers.h"
#include "common/paths.h"
#include "console/decoders/OpenHistory.h"
#include "history/Changes.h"
#include "imaging/fits/FitsWriter.h"
#include "imaging/fits/SkyFile.h"
#include "sky/night/MeasuresFile.h"
#include "sky/planes/FramesOfFiles.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include <unistd.h>

namespace tarn {

namespace {

std::string PlainMap(const FrameMap& map) {
    std::array<char, 160> text{};
    std::snprintf(text.data(), text.size(), "  a %.9g b %.9g c %.4f d %.9g e %.9g f %.4f", map.a,
                  map.b, map.c, map.d, map.e, map.f);
    return text.data();
}

// What the frames' headers say of their times, as far as they do.
struct Exposures {
    double seconds = 0; // of all
    std::string first;  // beginning
};
Exposures ExposuresOf(const SumOrder& order) {
    Exposures all;
    for (const SeriesFrame& frame : order.plan.frames) {
        std::string error;
        const auto header = ReadSkyHeader(order.paths[frame.number], error);
        if (!header) continue;
        all.seconds += ParseNumber(header->exposure).value_or(0);
        if (all.first.empty() || (!header->date.empty() && header->date < all.first))
            all.first = header->date;
    }
    return all;
}

// The header's place in the sky, by words, where its cards cannot be had.
void AddWords(FitsCards& cards, const std::string& path) {
    std::string error;
    const auto header = ReadSkyHeader(path, error);
    if (!header) return;
    const std::array<std::pair<const char*, const std::string*>, 6> words{
        {{"OBJECT", &header->object},
         {"FILTER", &header->filter},
         {"TELESCOP", &header->telescope},
         {"INSTRUME", &header->camera},
         {"OBJCTRA", &header->rightAscension},
         {"OBJCTDEC", &header->declination}}};
    for (const auto& [word, value] : words)
        if (!value->empty()) cards.Add(word, std::string_view(*value));
    if (header->topDown) cards.Add("ROWORDER", std::string_view("TOP-DOWN"));
}

FitsCards CardsOf(const SumOrder& order) {
    FitsCards cards;
    const std::string& reference = order.paths[*order.plan.reference];
    const std::vector<std::string> kept = CardsOfFrame(reference);
    for (const std::string& card : kept) cards.AddWhole(card);
    if (kept.empty()) AddWords(cards, reference);
    const Exposures times = ExposuresOf(order);
    if (!times.first.empty())
        cards.Add("DATE-OBS", std::string_view(times.first), "beginning of the first frame");
    cards.Add("NCOMBINE", static_cast<long long>(order.plan.frames.size()), "frames in the mean");
    if (times.seconds > 0) cards.Add("TOTALEXP", times.seconds, "seconds of all frames");
    cards.Add("CREATOR", std::string_view("Tarn View"));
    cards.AddHistory("Mean of the frames below, in the grid, light and sky of " +
                     LastPart(reference));
    cards.AddHistory("A point (x, y) stands at (a x + b y + c, d x + e y + f), from (0, 0)");
    for (const SeriesFrame& frame : order.plan.frames) {
        cards.AddHistory(LastPart(order.paths[frame.number]));
        cards.AddHistory(PlainMap(frame.map));
    }
    return cards;
}

// The sum as a file of the cache folder, which is gone with this.
class SumFile : public SumTarget {
public:
    explicit SumFile(const SumOrder& order)
        : m_order(order),
          m_path(JoinPath(CacheFolder(), "sum-" + std::to_string(::getpid()) + ".fits")) {}
    ~SumFile() override { ::unlink(m_path.c_str()); }

    bool Begin(int width, int height, int colours) override {
        if (m_order.target.empty()) return true;
        ::unlink(m_path.c_str());
        return m_writer.Create(m_path, width, height, colours, CardsOf(m_order));
    }
    bool Write(int colour, int row, int rows, const float* values) override {
        return m_order.target.empty() || m_writer.WriteRows(colour, row, rows, values);
    }
    bool Close() { return m_writer.Close(); }
    const std::string& Path() const { return m_path; }
    const std::string& Error() const { return m_writer.Error(); }

private:
    const SumOrder& m_order;
    std::string m_path;
    FitsWriter m_writer;
};

std::string Place(SumFile& sum, const SumOrder& order) {
    if (!sum.Close()) return sum.Error();
    OpenHistory open;
    std::string error;
    if (open.files->IsFolder(order.target)) return "a folder of that name stands there";
    Changes changes(open.history, "Sum of " + std::to_string(order.plan.frames.size()) +
                                      " frames to '" + LastPart(order.target) + "'");
    const std::string target = open.files->Absolute(order.target);
    return changes.CopyTo(sum.Path(), target, &error, Standing::ThrowAway) ? std::string() : error;
}

} // namespace

StackResult MakeSum(const SumOrder& order) {
    StackOrder how;
    how.sigmas = order.sigmas;
    how.scratch = CacheFolder();
    SumFile sum(order);
    const auto read = [&](std::size_t number, std::string& error) {
        return ReadFrameColours(order.paths[number], error);
    };
    StackResult result = StackSeries(order.plan, read, how, sum);
    if (!sum.Error().empty()) result.fault = sum.Error();
    if (result.fault.empty() && !order.target.empty()) result.fault = Place(sum, order);
    return result;
}

} // namespace tarn
