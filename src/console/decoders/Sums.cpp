#include "console/decoders/Sums.h"

#include "common/numbers.h"
#include "common/paths.h"
#include "common/text.h"
#include "console/decoders/OpenHistory.h"
#include "console/decoders/WriteInPlace.h"
#include "history/Changes.h"
#include "imaging/fits/FitsWriter.h"
#include "imaging/fits/KeptCards.h"
#include "imaging/fits/SkyFile.h"
#include "sky/headers/FrameHeader.h"
#include "sky/night/MeasuresFile.h"
#include "sky/planes/FramesOfFiles.h"
#include "sky/stack/Scratch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

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
Exposures ExposuresOf(const SumOrder& order, const StackResult& result) {
    Exposures all;
    double middles = 0;
    double weights = 0;
    for (const SeriesFrame& frame : order.plan.frames) {
        const StackedFrame& used = result.frames[frame.number];
        if (!used.used) continue;
        const ExposureTime time = ReadFrameHeader(order.paths[frame.number], {}).where.time;
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

std::size_t CountOf(const StackResult& result) {
    return std::size_t(std::count_if(result.frames.begin(), result.frames.end(),
                                     [](const StackedFrame& frame) { return frame.used; }));
}

FitsCards CardsOf(const SumOrder& order, const StackResult& result) {
    FitsCards cards;
    const std::string& reference = order.paths[*order.plan.reference];
    std::string error;
    const auto header = ReadSkyHeader(reference, error);
    const std::vector<std::string> kept = CardsOfFrame(reference, header ? header->image : 0);
    for (const std::string& card : kept) cards.AddWhole(card);
    if (kept.empty()) AddWords(cards, header);
    const Exposures times = ExposuresOf(order, result);
    cards.Add("TIMESYS", std::string_view("UTC"));
    AddDate(cards, "DATE-OBS", times.begin, "UTC, beginning of the first frame");
    AddDate(cards, "DATE-END", times.end, "UTC, end of the last one");
    AddDate(cards, "DATE-AVG", times.middle, "UTC, mean of their middles by weight");
    cards.Add("NCOMBINE", static_cast<long long>(CountOf(result)), "frames in the mean");
    if (times.seconds > 0) cards.Add("TOTALEXP", times.seconds, "seconds of all frames");
    cards.Add("CREATOR", kCreator);
    cards.AddHistory("Mean of the frames below, in the grid, light and sky of " +
                     LastPart(reference));
    cards.AddHistory("A point (x, y) stands at (a x + b y + c, d x + e y + f), from (0, 0)");
    for (const SeriesFrame& frame : order.plan.frames) {
        const StackedFrame& used = result.frames[frame.number];
        if (!used.used) continue;
        std::array<char, 32> weight{};
        std::snprintf(weight.data(), weight.size(), "%.6g", used.weight);
        cards.AddHistory(LastPart(order.paths[frame.number]) + ", weight " + weight.data());
        AddMap(cards, frame.map);
    }
    return cards;
}

// The sum as a nameless file of the cache folder, which is gone with this however it ends.
class SumFile : public SumTarget {
public:
    explicit SumFile(const SumOrder& order) : m_order(order), m_file(CacheFolder()) {}

    bool Begin(int width, int height, int colours) override {
        if (m_order.target.empty()) return true;
        constexpr std::size_t kOfFrame = 5; // lines, its name may take several
        constexpr std::size_t kOfReference = 200;
        return m_writer.CreateIn(::dup(m_file.Number()), width, height, colours,
                                 kOfReference + kOfFrame * m_order.plan.frames.size());
    }
    bool Write(int colour, int row, int rows, const float* values) override {
        return m_order.target.empty() || m_writer.WriteRows(colour, row, rows, values);
    }
    bool Close(const StackResult& result) { return m_writer.Close(CardsOf(m_order, result)); }
    int Number() const { return m_file.Number(); }
    const std::string& Error() const { return m_writer.Error(); }

private:
    const SumOrder& m_order;
    Scratch m_file;
    FitsWriter m_writer;
};

// The bytes of a file where the system has them already.
class MappedFile {
public:
    explicit MappedFile(int file) {
        struct stat facts {};
        if (::fstat(file, &facts) != 0) return;
        m_count = std::size_t(facts.st_size);
        m_bytes = ::mmap(nullptr, m_count, PROT_READ, MAP_PRIVATE, file, 0);
    }
    ~MappedFile() {
        if (m_bytes != MAP_FAILED) ::munmap(m_bytes, m_count);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    explicit operator bool() const { return m_bytes != MAP_FAILED; }
    std::string_view Bytes() const { return {static_cast<const char*>(m_bytes), m_count}; }

private:
    void* m_bytes = MAP_FAILED;
    std::size_t m_count = 0;
};

std::string Place(SumFile& sum, const SumOrder& order, const StackResult& result) {
    if (!sum.Close(result)) return sum.Error();
    const MappedFile file(sum.Number());
    if (!file) return "cannot be read again";
    OpenHistory open;
    std::string error;
    Changes changes(open.history, "Sum of " + std::to_string(CountOf(result)) + " frames to '" +
                                      LastPart(order.target) + "'");
    const std::string target = open.files->Absolute(order.target);
    return WriteInPlace(changes, target, file.Bytes(), &error) ? std::string() : error;
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
    if (result.fault.empty() && !order.target.empty()) result.fault = Place(sum, order, result);
    return result;
}

} // namespace tarn
