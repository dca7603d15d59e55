#include "console/decoders/Sums.h"

#include "common/numbers.h"
#include "common/paths.h"
#include "console/decoders/OpenHistory.h"
#include "console/decoders/WriteInPlace.h"
#include "history/Changes.h"
#include "imaging/fits/FitsWriter.h"
#include "imaging/fits/SkyFile.h"
#include "platform/OpenRegular.h"
#include "sky/night/MeasuresFile.h"
#include "sky/planes/FramesOfFiles.h"

#include <algorithm>
#include <array>
#include <cstdio>

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

// What the frames' headers say of their times, as far as they do.
struct Exposures {
    double seconds = 0; // of all
    std::string first;  // beginning
};
Exposures ExposuresOf(const SumOrder& order, const StackResult& result) {
    Exposures all;
    for (const SeriesFrame& frame : order.plan.frames) {
        if (!result.frames[frame.number].used) continue;
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

std::size_t CountOf(const StackResult& result) {
    return std::size_t(std::count_if(result.frames.begin(), result.frames.end(),
                                     [](const StackedFrame& frame) { return frame.used; }));
}

FitsCards CardsOf(const SumOrder& order, const StackResult& result) {
    FitsCards cards;
    const std::string& reference = order.paths[*order.plan.reference];
    const std::vector<std::string> kept = CardsOfFrame(reference);
    for (const std::string& card : kept) cards.AddWhole(card);
    if (kept.empty()) AddWords(cards, reference);
    const Exposures times = ExposuresOf(order, result);
    if (!times.first.empty())
        cards.Add("DATE-OBS", std::string_view(times.first), "beginning of the first frame");
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
        constexpr std::size_t kOfFrame = 5; // lines, its name may take several
        constexpr std::size_t kOfReference = 200;
        return m_writer.Create(m_path, width, height, colours,
                               kOfReference + kOfFrame * m_order.plan.frames.size());
    }
    bool Write(int colour, int row, int rows, const float* values) override {
        return m_order.target.empty() || m_writer.WriteRows(colour, row, rows, values);
    }
    bool Close(const StackResult& result) { return m_writer.Close(CardsOf(m_order, result)); }
    const std::string& Path() const { return m_path; }
    const std::string& Error() const { return m_writer.Error(); }

private:
    const SumOrder& m_order;
    std::string m_path;
    FitsWriter m_writer;
};

// The bytes of a file where the system has them already.
class MappedFile {
public:
    explicit MappedFile(const std::string& path) {
        std::string error;
        const OpenFile file(path, error);
        struct stat facts {};
        if (!file || ::fstat(file.Number(), &facts) != 0) return;
        m_count = std::size_t(facts.st_size);
        m_bytes = ::mmap(nullptr, m_count, PROT_READ, MAP_PRIVATE, file.Number(), 0);
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
    const MappedFile file(sum.Path());
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
