// Takes the input for a picture file of any kind, and looks for its camera data.
#include "Demand.h"
#include "Input.h"
#include "MemoryFile.h"
#include "SkyTrial.h"

#include "common/file_look.h"
#include "imaging/exif/Boxes.h"
#include "imaging/exif/FileFront.h"
#include "imaging/exif/XmpPlaces.h"
#include "pictureinfo/PictureInfoReader.h"

#include <fcntl.h>
#include <unistd.h>

using namespace tarn;
using namespace tarn::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = Input(data, size).Rest();
    const MemoryFile& memory = FileOf(bytes);
    const int number = ::open(memory.Path().c_str(), O_RDONLY | O_CLOEXEC);
    Demand(number >= 0);
    const auto front = ReadFileFront(number);
    Demand(front.has_value());
    // As it stands, or the head of a JPEG file.
    const std::string own = bytes.substr(0, kFileFront);
    Demand(*front == own || bytes.find(*front) != std::string::npos ||
           front->substr(6, 4) == "Exif");
    const FileBytes file(number);
    const int orientation = OrientationOfContainer(file);
    Demand(orientation >= 1 && orientation <= 8);
    HeifTurns(file);
    Demand(ReadXmp(file).size() <= bytes.size());
    TryHeader(memory.Path());
    ::close(number);
    PictureInfoReader reader;
    PictureInfo info;
    info.Filename = memory.Path();
    reader.ReadPictureInfo(info);
    Demand(reader.FileWasRead());
    reader.ReadCameraDate(info);
    return 0;
}
