// Camera data of files of other kinds than JPEG: the panel is that of a JPEG file with the same
// data.
#include "Reading.h"
#include "support/ContainerFiles.h"

#include "imaging/exif/FileFront.h"
#include "pictureinfo/dates/CameraDateWriting.h"

#include <fcntl.h>
#include <unistd.h>

using namespace tarn;
using namespace tarn::testing;
using namespace std::string_literals;

namespace {

class Containers : public Reading {
protected:
    // The rows behind those of name, date of the file and size.
    std::vector<std::string> Rows(const std::string& bytes) {
        const PictureInfo& info = Read(bytes);
        std::vector<std::string> rows = info.PanelRows;
        if (rows.size() > 2) rows[2].clear();
        return rows;
    }
    int Orientation(const std::string& bytes) {
        const std::string path = m_folder.Write("o.jpg", bytes);
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        const int orientation = OrientationOfContainer(FileBytes(file));
        ::close(file);
        return orientation;
    }
};

// As raw files mark themselves.
std::string AsRaw(std::string tiff) {
    return tiff.replace(2, 2, "RO");
}

// The first directory behind all that it points to.
std::string DirectoryLast(std::string tiff) {
    const std::size_t entries = std::uint8_t(tiff[8]);
    const std::string directory = tiff.substr(8, 2 + 12 * entries + 4);
    const std::string place = LowFirst(tiff.size(), 4);
    tiff.replace(8, directory.size(), directory.size(), '\xEE');
    return tiff.replace(4, 4, place) + directory;
}

} // namespace

TEST_F(Containers, ShowWhatAJpegFileOfTheSameDataShows) {
    for (const std::string& jpeg : {CanonPicture(), NikonPicture()}) {
        const std::vector<std::string> expected = Rows(jpeg);
        ASSERT_EQ(expected.size(), 13U);
        const std::string tiff = TiffOf(jpeg);
        EXPECT_EQ(Rows(PngWith(tiff, false)), expected);
        EXPECT_EQ(Rows(PngWith(tiff, true)), expected);
        EXPECT_EQ(Rows(WebPWith(tiff)), expected);
        EXPECT_EQ(Rows(WebPWith("Exif\0\0"s + tiff)), expected);
        for (const HeifOptions& options :
             {HeifOptions{0}, HeifOptions{1}, HeifOptions{1, true}, HeifOptions{1, false, true}})
            EXPECT_EQ(Rows(HeifWith(tiff, options)), expected) << options.version;
        EXPECT_EQ(Rows(JxlWith(tiff)), expected);
        EXPECT_EQ(Rows(RawAroundJpeg(jpeg)), expected);
        EXPECT_EQ(Rows(AsRaw(tiff)), expected);
        // The fast pass finds the same date.
        const std::string date = m_info.CameraDate;
        m_info.CameraDate.clear();
        EXPECT_EQ(ReadDate(PngWith(tiff, true)).CameraDate, date);
    }
}

TEST_F(Containers, RawFilesKeepTheirDataWhereTheyLike) {
    const std::vector<std::string> expected = Rows(CanonPicture());
    EXPECT_EQ(Rows(DirectoryLast(AsRaw(TiffOf(CanonPicture())))), expected);
    // Beyond the places that the reader looks at in a JPEG file, short texts in their entries.
    ExifBuilder far(Endian::Little);
    far.DataFrom(70000).Data(271, 2, 4, "Tar\0"s).Ascii(272, "Far One").ExifDirectory();
    far.Rational(33434, 1, 125).Rational(33437, 56, 10).Ascii(36867, "2004:06:22 20:15:30");
    Read(AsRaw(far.Tiff()));
    EXPECT_EQ(Line(12), "      Camera: Far One");
    EXPECT_EQ(Line(4), "    Exposure: 1/125s - f/5.6");
    EXPECT_EQ(m_info.PictureDate, "06/22/2004 8:15:30 PM");
}

// The reader would find their first directory by itself, and nothing of what lies far behind.
TEST_F(Containers, BigEndianRawFilesToo) {
    ExifBuilder data(Endian::Big);
    data.Short(262, 32803).Ascii(272, "Far One").ExifDirectory(); // a sensor's filters
    data.DataFrom(70000).Rational(33434, 1, 125).Ascii(36867, "2004:06:22 20:15:30");
    Read(data.Tiff());
    EXPECT_EQ(Line(12), "      Camera: Far One");
    EXPECT_EQ(Line(4), "    Exposure: 1/125s");
    EXPECT_EQ(m_info.PictureDate, "06/22/2004 8:15:30 PM");
    // Where all of it lies in front, the date can still be written over.
    ExifBuilder near(Endian::Big);
    near.Short(262, 32803).Ascii(272, "Near One").ExifDirectory();
    near.Ascii(36867, "2004:06:22 20:15:30");
    Read(near.Tiff());
    EXPECT_EQ(m_info.PictureDate, "06/22/2004 8:15:30 PM");
    EXPECT_LT(std::size_t(m_info.PictureDataOffset + m_info.CameraDateOffset), kDateReach);
}

TEST_F(Containers, RawFilesInBoxesKeepTheirNoteApart) {
    ExifBuilder first(Endian::Little);
    first.Ascii(271, "Canon").Ascii(272, "Canon EOS R6").Short(274, 8);
    ExifBuilder exif(Endian::Little);
    exif.Rational(33434, 1, 500).Ascii(36867, "2021:06:22 20:15:30").Short(37385, 0);
    const CanonNote note{{{3, 3}, {20, 3}}, {}};
    Read(RawBoxes(first.Tiff(), exif.Tiff(), "II*\0\x08\0\0\0"s + note.Bytes(8)));
    EXPECT_EQ(Line(12), "      Camera: Canon EOS R6");
    EXPECT_EQ(m_info.PictureDate, "06/22/2021 8:15:30 PM");
    EXPECT_EQ(Line(8), "    Settings: Quality> Fine     Sharpening> Normal");
}

TEST_F(Containers, WhatHasNoneShowsNone) {
    const std::string tiff = TiffOf(CanonPicture());
    EXPECT_EQ(Rows(tiff).size(), 3U); // a plain little-endian TIFF file
    EXPECT_EQ(Rows(PngWith("nothing that is known", false)).size(), 3U);
    EXPECT_EQ(Rows(HeifWith("")).size(), 3U);
    // Lengths that reach beyond the file, and files cut anywhere.
    for (const std::string& whole :
         {PngWith(tiff, true), WebPWith(tiff), HeifWith(tiff), JxlWith(tiff), AsRaw(tiff),
          RawBoxes(tiff, tiff, tiff), RawAroundJpeg(CanonPicture())})
        for (std::size_t length = 0; length < whole.size(); length += whole.size() / 40 + 1) {
            Rows(whole.substr(0, length));
            EXPECT_GE(m_info.PanelRows.size(), 3U) << length;
        }
}

// The places that are told are those of a JPEG file: nothing may be written there.
TEST_F(Containers, TheDateCannotBeWrittenOver) {
    Read(WebPWith(TiffOf(CanonPicture())));
    EXPECT_GE(std::size_t(m_info.PictureDataOffset + m_info.CameraDateOffset), kDateReach);
}

TEST_F(Containers, TellHowTheyAreTurned) {
    for (const Endian endian : {Endian::Little, Endian::Big})
        for (unsigned orientation = 1; orientation <= 9; ++orientation) {
            const std::string tiff = ExifBuilder(endian).Short(274, orientation).Tiff();
            const int told = orientation <= 8 ? int(orientation) : 1;
            EXPECT_EQ(Orientation(PngWith(tiff, true)), told);
            EXPECT_EQ(Orientation(WebPWith(tiff)), told);
            EXPECT_EQ(Orientation(HeifWith(tiff)), told);
            EXPECT_EQ(Orientation(tiff), told);
            EXPECT_EQ(Orientation(CanonPicture()), 1);
        }
}
