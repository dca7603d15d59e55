// Takes the input for a picture whose date is read by the pass over folders and written over, and
// for a date as text.
#include "Demand.h"
#include "Input.h"
#include "MemoryFile.h"
#include "MemoryFiles.h"

#include "common/codepage.h"
#include "pictureinfo/PictureInfoReader.h"
#include "pictureinfo/dates/CameraDateText.h"
#include "pictureinfo/dates/CameraDateWriting.h"

using namespace tarn;
using namespace tarn::fuzz;

namespace {

std::size_t Characters(const std::string& date) {
    const auto bytes = ToCodePage(date);
    Demand(bytes.has_value());
    return bytes->size();
}

// Bytes of the code page, a character each.
void TryText(std::string_view bytes) {
    const std::string date = FromCodePage(bytes);
    if (FileTimeOf(date)) Demand(bytes.size() >= kCameraDateLength - 1);
    for (const int by : {-1, 1}) {
        const auto moved = WithHourMoved(date, by);
        if (moved) Demand(Characters(*moved) == bytes.size());
    }
    Demand(Characters(WithSecondAdded(date)) == bytes.size());
    TextsOf(date);
}

void TryPicture(std::string_view bytes) {
    static const MemoryFile file;
    constexpr std::string_view kNew = "2026:11:25 09:30:00";
    file.Fill(bytes);
    PictureInfoReader reader;
    PictureInfo info;
    info.Filename = file.Path();
    reader.ReadCameraDate(info);
    if (info.NoExif) return;
    TryText(ToCodePage(info.CameraDate).value_or(std::string()));
    const auto position = static_cast<std::size_t>(info.CameraDateOffset + info.PictureDataOffset);
    MemoryFiles files;
    files.bytes = bytes;
    DateAt(files, "x", position);
    const auto done = WriteDate(files, "x", position, info.CameraDate, std::string(kNew));
    Demand(position < kDateReach || done.result == DateWriting::OutOfReach);
    std::string expected(bytes);
    if (done.result == DateWriting::Written) expected.replace(position, kNew.size(), kNew);
    Demand(files.bytes == expected);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = Input(data, size).Rest();
    TryPicture(bytes);
    TryText(bytes);
    return 0;
}
