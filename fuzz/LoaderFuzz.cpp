// Takes the input for a picture file of whatever kind, opened and decoded as the window does, with
// all readers in this process.
#include "Demand.h"
#include "Input.h"
#include "MemoryFile.h"

#include "imaging/PictureLoader.h"
#include "platform/DecodeBudget.h"

using namespace tarn;
using namespace tarn::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr long long kMemory = 64LL << 20;
    TheDecodeBudget().SetBytes(kMemory);
    const MemoryFile& memory = FileOf(Input(data, size).Rest());
    for (const bool toolkit : {false, true}) {
        std::string error;
        const auto source = toolkit ? PictureLoader::OpenWithToolkit(memory.Path(), error)
                                    : PictureLoader::Open(memory.Path(), error);
        Demand(source || !error.empty());
        if (!source) continue;
        const QImage reduced = source->Decode({8, 6}, error);
        Demand(!reduced.isNull() || !error.empty());
        if (!reduced.isNull()) source->PrepareScaled({3, 2});
        source->Decode({}, error);
    }
    return 0;
}
