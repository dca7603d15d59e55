// Takes the input for a log, which is read in parts of a few bytes or a few thousand.
#include "Demand.h"
#include "Input.h"
#include "MemoryFiles.h"

#include "common/utf8.h"
#include "platform/LogFile.h"

using namespace tarn;
using namespace tarn::fuzz;

namespace {

void DemandShort(std::string_view text) {
    Demand(IsUtf8(text));
    for (std::size_t line = 0; line < text.size();) {
        const std::size_t end = std::min(text.find('\n', line), text.size());
        Demand(end - line <= kLongestLine);
        line = end + 1;
    }
}

std::string WithoutBreaks(std::string text) {
    std::erase(text, '\n');
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::size_t part = 4 + std::size_t(input.Byte()) * 32;
    MemoryFiles files;
    files.bytes = input.Rest();
    LogFile log(files, part);
    Demand(log.ReadFirst("x"));
    std::string all = log.Text();
    DemandShort(log.Text());
    for (std::size_t parts = 1; log.HasMore(); ++parts) {
        Demand(parts <= files.bytes.size()); // each has a byte at least
        Demand(log.ReadMore());
        DemandShort(log.Text());
        all += log.Text();
    }
    // Nothing is lost, but for the marks of UTF-8 at the beginning of a part.
    if (IsUtf8(files.bytes) && files.bytes.find("\xEF\xBB\xBF") == std::string::npos)
        Demand(WithoutBreaks(all) == WithoutBreaks(files.bytes));
    Demand(log.Read("x")); // as much again, at once
    DemandShort(log.Text());
    return 0;
}
