// What is said of pictures that are not shown is what the window says when they are.
#include "PictureFiles.h"
#include "support/ContainerFiles.h"
#include "support/ExifBuilder.h"
#include "support/TestFolder.h"

#include "facts/DiskFacts.h"
#include "imaging/ImgX.h"
#include "imaging/Upright.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

// As the window shows the file: turned by its reader, or by the camera's orientation.
std::pair<int, int> Shown(const std::string& path) {
    PictureInfoReader reader;
    PictureInfo info;
    BeginPicture(info, path);
    reader.ReadPictureInfo(info);
    ImgX picture;
    EXPECT_EQ(picture.LoadFile(path, {}), "");
    if (!picture.IsUpright()) TurnUpright(info.ExpOrientation, picture);
    return {picture.Width(), picture.Height()};
}

// The TIFF file that the toolkit writes, with another orientation.
std::string TurnedTiff(const QImage& picture, unsigned orientation) {
    std::string bytes = PictureBytes(picture, "TIFF");
    const std::size_t entry = bytes.find(std::string("\x12\x01\x03\0\x01\0\0\0", 8));
    if (entry == std::string::npos) return {};
    bytes[entry + 8] = char(orientation);
    return bytes;
}

} // namespace

// As the window has it, but for JPEG files that are to be mirrored and lie on their side: it leaves
// these as they are, while thumbnails and browsers turn them.
TEST(DiskFacts, TheSizeIsThatOfTheUprightPicture) {
    const TestFolder folder;
    const QImage stored = TellTale(60, 40);
    DiskFacts facts;
    for (unsigned orientation = 1; orientation <= 8; ++orientation) {
        const ExifBuilder data = ExifBuilder(Endian::Big).Short(274, orientation);
        const std::string head = data.Jpeg();
        const std::string name = std::to_string(orientation);
        for (const std::string& path :
             {folder.Write(name + ".jpg",
                           head.substr(0, head.size() - 2) + JpegBytes(stored).substr(2)),
              folder.Write(name + ".tif", TurnedTiff(stored, orientation))})
            if (path.ends_with(".tif") || (orientation != 5 && orientation != 7)) {
                EXPECT_EQ(facts.UprightSize(path), Shown(path)) << path;
            }
        const bool sideways = orientation >= 5;
        EXPECT_EQ(facts.UprightSize(folder.Path() + "/" + name + ".jpg"),
                  sideways ? std::pair(40, 60) : std::pair(60, 40));
        EXPECT_EQ(facts.UprightSize(folder.Path() + "/" + name + ".tif"),
                  sideways ? std::pair(40, 60) : std::pair(60, 40));
    }
}

} // namespace tarn::testing
