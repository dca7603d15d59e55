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

void TryText(std::string_view date) {
    if (FileTimeOf(date)) Demand(date.size() >= kCameraDateLength - 1);
    for (const int by : {-1, 1}) {
        const auto moved = WithHourMoved(date, by);
        if (moved) Demand(moved->size() == date.size());
    }
    Demand(WithSecondAdded(date).size() == date.size());
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
    TryText(info.CameraDate);
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
