// Takes the input for a FITS file: as it is, or written as lines that become cards of the header,
// up to the line "END", and data behind it, so that a short input makes a whole file.
#include "Demand.h"
#include "Input.h"
#include "MemoryFile.h"

#include "imaging/fits/FitsFile.h"
#include "imaging/fits/FitsLines.h"
#include "imaging/fits/FitsPixels.h"

using namespace tarn;
using namespace tarn::fuzz;

namespace {

constexpr std::size_t kBlock = 2880;
constexpr std::size_t kCard = 80;
constexpr std::size_t kMostSamples = 1 << 16; // so that a run stays short

std::string FileOf(Input input, bool asItIs) {
    if (asItIs) return input.Rest();
    std::string file;
    while (!input.IsEmpty()) {
        std::string card = input.Line();
        const bool end = card == "END";
        card.resize(kCard, ' ');
        file += card;
        if (!end) continue;
        file.resize((file.size() + kBlock - 1) / kBlock * kBlock, ' ');
        if (input.Byte() == '+') continue; // another part without data between
        file += input.Rest();
        file.resize((file.size() + kBlock - 1) / kBlock * kBlock, '\0');
        break;
    }
    return file;
}

void TryPixels(const std::string& path) {
    std::string error;
    for (const int side : {0, 3}) {
        error.clear();
        const auto pixels = FitsPixels::Read(path, side, side, error);
        if (!pixels) {
            Demand(!error.empty());
            return;
        }
        const auto width = std::size_t(pixels->Width());
        std::vector<std::uint32_t> light(width * std::size_t(pixels->Height()));
        pixels->ToRgb(pixels->Automatic(), light.data(), width);
        pixels->ToRgb(LinearStretch(pixels->Range()), light.data(), width);
        Demand(pixels->Range().low < pixels->Range().high);
    }
}

} // namespace

// As outside of a sanitizer: what is too large is not given.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFile memory;
    Input input(data, size);
    const bool asItIs = input.Byte() == 'F';
    const std::string bytes = FileOf(input, asItIs);
    memory.Fill(bytes);
    const auto lines = FitsLinesOf(memory.Path());
    for (const std::string& line : lines)
        for (const char c : line) Demand(c >= ' ' && c <= '~');
    if (!IsFitsFile(memory.Path())) {
        Demand(lines.empty());
        return 0;
    }
    std::string error;
    const auto header = ReadFitsHeader(memory.Path(), error);
    Demand(header.has_value() == error.empty() && header.has_value() == !lines.empty());
    if (!header) return 0;
    Demand(header->width > 0 && header->height > 0);
    const std::uint64_t pixels = std::uint64_t(header->width) * std::uint64_t(header->height);
    if (pixels <= kMostSamples) TryPixels(memory.Path());
    return 0;
}
