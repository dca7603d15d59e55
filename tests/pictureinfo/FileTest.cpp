#include "Reading.h"

#include <filesystem>
#include <unistd.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

class Files : public Reading {
protected:
    static ExifBuilder DateAt(Endian endian, std::uint32_t offset, std::string_view date) {
        ExifBuilder exif(endian);
        exif.DataFrom(offset).Ascii(36867, date);
        return exif;
    }
};

constexpr const char* kFirst = "2001:01:01 10:00:00";
constexpr const char* kSecond = "2002:02:02 20:00:00";

} // namespace

TEST_F(Files, ThreeKindsAreKnown) {
    const ExifBuilder big = DateAt(Endian::Big, 200, kFirst);
    Read(big.Jpeg());
    EXPECT_EQ(m_info.PictureDataOffset, 22);
    Read(big.Tiff());
    EXPECT_EQ(m_info.PictureDataOffset, 10);
    EXPECT_EQ(m_info.PictureDate, "01/01/2001 10:00:00 AM");
    Read(big.JpegJfifFirst());
    EXPECT_EQ(m_info.PictureDataOffset, 40);
    EXPECT_EQ(m_info.PictureDate, "01/01/2001 10:00:00 AM");
    EXPECT_EQ(m_info.CameraDateOffset, 190);
    // Both heads at once: what is looked for last holds.
    Read("MM" + big.JpegJfifFirst().substr(2));
    EXPECT_EQ(m_info.PictureDataOffset, 40);
    EXPECT_EQ(m_info.PictureDate, "01/01/2001 10:00:00 AM");
    std::string noMarker = big.Jpeg();
    noMarker.replace(0, 6, "abcdef");
    Read(noMarker);
    EXPECT_EQ(m_info.PictureDate, "01/01/2001 10:00:00 AM");
}

TEST_F(Files, OtherKindsHaveNoData) {
    const ExifBuilder little = DateAt(Endian::Little, 200, kFirst);
    EXPECT_TRUE(Read(little.Tiff()).NoExif);
    std::string longer = little.JpegJfifFirst();
    longer.insert(20, 2, '\0'); // a JFIF segment of 20 bytes
    EXPECT_TRUE(Read(longer).NoExif);
    EXPECT_TRUE(Read("").NoExif);
    // Little-endian data behind a JFIF head are found, but read in the other order.
    Read(little.JpegJfifFirst());
    EXPECT_FALSE(m_info.NoExif);
    EXPECT_EQ(m_info.PictureDate, "");
}

TEST_F(Files, AFileThatCannotBeReadGivesThePictureBefore) {
    const std::string jpeg = DateAt(Endian::Big, 200, kFirst).Jpeg();
    Read(jpeg);
    EXPECT_TRUE(m_reader.FileWasRead());
    BeginPicture(m_info, m_folder.Path() + "/gone.jpg");
    m_reader.ReadPictureInfo(m_info);
    EXPECT_FALSE(m_reader.FileWasRead());
    EXPECT_EQ(m_info.PictureDate, "01/01/2001 10:00:00 AM");
    EXPECT_EQ(Line(2), "        Size: 0.0 Megapixel - 0 x 0 - 0 KB");
    BeginPicture(m_info, m_folder.Path());
    m_reader.ReadPictureInfo(m_info);
    EXPECT_FALSE(m_reader.FileWasRead());
    EXPECT_EQ(m_info.PictureDate, "01/01/2001 10:00:00 AM");
}

TEST_F(Files, AShortFileKeepsNothingOfThePictureBefore) {
    const std::string jpeg = DateAt(Endian::Big, 200, kFirst).Jpeg();
    Read(jpeg);
    Read(jpeg.substr(0, 212)); // cut in front of the text
    EXPECT_EQ(m_info.CameraDate, std::string(19, '\0'));
    EXPECT_EQ(m_info.PictureDate, "");
}

TEST_F(Files, DatePassSetsTheDatesOnly) {
    ExifBuilder exif = DateAt(Endian::Big, 200, kFirst);
    exif.Short(274, 6);
    m_info.NoExif = true;
    m_info.CameraDateIndex = 7;
    const std::string path = m_folder.Write("a.jpg", exif.Jpeg());
    SetFileTime(path, 2003, 12, 31, 0, 5, 9);
    m_info.Filename = path;
    m_reader.ReadCameraDate(m_info);
    EXPECT_EQ(m_info.FileDate, "12/31/2003 12:05:09 AM");
    EXPECT_EQ(m_info.CameraDate, kFirst);
    EXPECT_EQ(m_info.CameraDateOffset, 190);
    EXPECT_EQ(m_info.PictureDate, "01/01/2001 10:00:00 AM");
    EXPECT_FALSE(m_info.NoExif);
    EXPECT_FALSE(m_info.DatesDiffer);
    EXPECT_EQ(m_info.ExpOrientation, 0);
    EXPECT_EQ(m_info.CameraDateIndex, 7);
    // Without a date of its own a picture has that of the one before it.
    ReadDate(ExifBuilder(Endian::Big).Jpeg());
    EXPECT_EQ(m_info.PictureDate, "01/01/2001 10:00:00 AM");
    EXPECT_TRUE(ReadDate("nothing").NoExif);
}

TEST_F(Files, DatePassCopiesTwoThousandBytes) {
    for (const bool jfif : {false, true}) {
        const auto file = [&](const ExifBuilder& exif) {
            return jfif ? exif.JpegJfifFirst() : exif.Tiff();
        };
        // The date ends with index 1999, or begins at index 2000.
        EXPECT_EQ(ReadDate(file(DateAt(Endian::Big, 1991, kFirst))).CameraDate, kFirst);
        Read(DateAt(Endian::Big, 2010, kSecond).Jpeg());
        EXPECT_EQ(ReadDate(file(DateAt(Endian::Big, 2010, kFirst))).CameraDate, kSecond);
        EXPECT_EQ(Read(file(DateAt(Endian::Big, 2010, kFirst))).CameraDate, kFirst);
    }
    // Data that stand first are there as a whole.
    EXPECT_EQ(ReadDate(DateAt(Endian::Big, 9000, kSecond).Jpeg()).CameraDate, kSecond);
}

TEST_F(Files, DatePassWalksToIndex1872) {
    const auto withDateAt = [](int entry) {
        ExifBuilder exif(Endian::Big);
        exif.DataFrom(4000);
        for (int i = 0; i < entry; ++i) exif.Short(999, 0);
        return exif.Ascii(36867, kFirst).Jpeg();
    };
    ReadDate(withDateAt(157));
    EXPECT_EQ(m_info.CameraDate, "");
    ReadDate(withDateAt(156)); // index 1872
    EXPECT_EQ(m_info.CameraDate, kFirst);
}
