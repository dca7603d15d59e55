// Takes the input for a SER clip.
#include "Demand.h"
#include "Input.h"
#include "MemoryFile.h"

#include "clips/SerFile.h"

using namespace tarn;
using namespace tarn::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = Input(data, size).Rest();
    const MemoryFile& memory = FileOf(bytes);
    SerFile file;
    const bool readable = file.Open(memory.Path()).empty();
    Demand(!readable || IsSer(bytes));
    std::vector<std::uint16_t> samples;
    Demand(!file.ReadFrame(-1, samples).empty());
    if (!readable) return 0;
    const SerHeader& header = file.Header();
    Demand(header.frames > 0 && header.FrameBytes() * header.frames <= std::int64_t(size));
    const auto times = file.Times();
    Demand(times.empty() || (times.size() == std::size_t(header.frames) && times.front() == 0));
    Demand(!file.ReadFrame(header.frames, samples).empty());
    const std::size_t pixels = std::size_t(header.width) * std::size_t(header.height);
    for (const int frame : {0, header.frames - 1}) {
        Demand(file.ReadFrame(frame, samples).empty());
        Demand(samples.size() == pixels * std::size_t(header.Samples()));
        Demand(SerColors(header, samples).size() == 3 * pixels);
    }
    return 0;
}
