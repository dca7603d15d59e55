// Takes the input for an XISF file: as it is, or as a header, up to a zero, with data behind it, so
// that a short input makes a whole file.
#include "Input.h"
#include "MemoryFile.h"
#include "SkyTrial.h"

using namespace tarn;
using namespace tarn::fuzz;

namespace {

std::string FileOf(Input input, bool asItIs) {
    const std::string rest = input.Rest();
    if (asItIs) return rest;
    const std::string header = rest.substr(0, rest.find('\0'));
    std::string file = "XISF0100";
    for (std::size_t i = 0; i < 4; ++i) file += char(header.size() >> 8 * i & 0xFF);
    return file + std::string(4, '\0') + rest;
}

} // namespace

// As outside of a sanitizer: what is too large is not given.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFile memory;
    Input input(data, size);
    const bool asItIs = input.Byte() == 'X';
    memory.Fill(FileOf(input, asItIs));
    TrySkyFile(memory.Path());
    return 0;
}
