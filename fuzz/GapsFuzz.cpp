// Takes the input for a bitmap, GIF or PNG file that the toolkit's readers do not show right.
#include "Demand.h"
#include "Input.h"
#include "MemoryFile.h"

#include "common/file_handle.h"
#include "imaging/PictureFormat.h"
#include "imaging/ToolkitGaps.h"

namespace tarn {

long long PictureMemoryLimit() {
    return 1 << 24;
}

} // namespace tarn

using namespace tarn;
using namespace tarn::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = Input(data, size).Rest();
    const MemoryFile& memory = FileOf(bytes);
    const FileHandle file(std::fopen(memory.Path().c_str(), "rb"));
    Demand(file != nullptr);
    std::string error;
    const auto picture = DecodeBitMasks(file.get(), error);
    Demand(!picture || !picture->isNull() || !error.empty());
    const std::string bitmap = FirstOfBitmaps(file.get());
    Demand(bitmap.empty() || bitmap.starts_with("BM"));
    QImage read(4, 3, QImage::Format_RGB32);
    EndsTooEarly(file.get(), read);
    if (const auto key = FindKeyColor(file.get())) Demand(key->file.size() < bytes.size());
    return 0;
}
