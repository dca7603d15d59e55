// Takes the input for a reply of the player, and its numbers for those of a clip.
#include "Demand.h"
#include "Input.h"

#include "video/VideoText.h"

#include <bit>
#include <memory>

using namespace tarn;
using namespace tarn::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    std::string text = input.Rest();
    TakeSize(text, *std::make_unique<ClipNumbers>());
    // Every word comes off, and no character is lost.
    for (std::size_t left = text.size() + 1; !text.empty() && left > 0; --left) {
        const std::size_t before = text.size();
        const std::string word = GetFirstWord(text);
        Demand(!word.empty() && word.size() + text.size() == before);
    }
    Demand(text.empty());

    ClipNumbers clip;
    clip.lastFrame = input.Number() & 0x7FFFFFFE;
    clip.frameRate = std::bit_cast<float>(input.Number());
    clip.width = input.Number();
    clip.height = input.Number();
    const long long bytes = static_cast<long long>(input.Number()) << 20 | input.Byte();
    const std::string name = "/none/" + input.Rest();
    Demand(PlayingTime(clip).ends_with("s"));
    Demand(ClipLines(name, clip, bytes)[12] == "     Picture: Video");
    Demand(SummaryLines(name, input.Rest(), bytes)[2].ends_with(input.Rest()));
    return 0;
}
