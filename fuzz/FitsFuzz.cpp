// Takes the input for a FITS file: as it is, or written as lines that become cards of the header,
// up to the line "END", and data behind it, so that a short input makes a whole file.
#include "Demand.h"
#include "Input.h"
#include "MemoryFile.h"
#include "SkyTrial.h"

#include "imaging/fits/FitsFile.h"

using namespace tarn;
using namespace tarn::fuzz;

namespace {

constexpr std::size_t kBlock = 2880;
constexpr std::size_t kCard = 80;

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
    TrySkyFile(memory.Path());
    return 0;
}
