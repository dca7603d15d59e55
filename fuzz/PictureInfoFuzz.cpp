// Reads the first half of the input as one picture and the second as the next, by both ways of
// reading and with one reader, so that what a picture leaves behind is tried as well.
#include "Demand.h"
#include "Input.h"
#include "MemoryFile.h"

#include "pictureinfo/PictureInfoReader.h"

using tarn::fuzz::Demand;

namespace {

void ReadBothWays(tarn::PictureInfoReader& reader, tarn::PictureInfo& info) {
    reader.ReadPictureInfo(info);
    Demand(reader.FileWasRead());
    Demand(info.PanelRows.size() == (info.ExifFound ? 13U : 3U));
    reader.ReadCameraDate(info);
    Demand(info.NoExif == !info.ExifFound);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const tarn::fuzz::MemoryFile file;
    const std::string bytes = tarn::fuzz::Input(data, size).Rest();
    tarn::PictureInfoReader reader;
    tarn::PictureInfo info;
    info.Filename = file.Path();
    const std::size_t half = size / 2;
    file.Fill(std::string_view(bytes).substr(0, half));
    ReadBothWays(reader, info);
    file.Fill(std::string_view(bytes).substr(half));
    ReadBothWays(reader, info);
    return 0;
}
