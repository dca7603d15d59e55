#include "Reading.h"
#include "pictureinfo/CameraDataText.h"

#include <cmath>

using namespace tarn;
using namespace tarn::testing;

namespace {

class Tags : public Reading {
protected:
    std::string BiasOf(const ExifBuilder& exif) { return Read(exif.Jpeg()).ExpBias; }
};

} // namespace

TEST_F(Tags, DateStandsWhereItsOffsetSays) {
    ExifBuilder exif(Endian::Little);
    exif.DataFrom(200).Ascii(36867, "2004:06:22 20:15:30");
    m_info.FileDate = "06/22/2004 8:15:31 PM";
    Read(exif.Jpeg());
    EXPECT_EQ(m_info.PictureDataOffset, 22);
    EXPECT_EQ(m_info.CameraDateOffset, 190);
    EXPECT_EQ(m_info.CameraDate, "2004:06:22 20:15:30");
    EXPECT_EQ(m_info.PictureDate, "06/22/2004 8:15:30 PM");
    EXPECT_EQ(m_info.CameraDateIndex, 1);
    EXPECT_FALSE(m_info.DatesDiffer); // day and first digit of the hour alone are compared
    for (const char* other : {"06/22/2004 9:15:30 PM", "6/22/2004 8:15:30 PM"}) {
        m_info.DatesDiffer = false;
        m_info.FileDate = other;
        EXPECT_TRUE(Read(exif.Jpeg()).DatesDiffer) << other;
    }
}

TEST_F(Tags, DateThatIsNone) {
    m_info.FileDate = "01/02/2003 4:05:06 AM";
    Read(ExifBuilder(Endian::Big).Ascii(36867, "0000:00:00 00:00:00").Jpeg());
    EXPECT_EQ(m_info.PictureDate, "00/00/0000 12:00:00 AM");
    EXPECT_EQ(Line(1), "        Date: 01/02/2003 4:05:06 AM  Thursday");
    EXPECT_TRUE(m_info.DatesDiffer);
    Read(ExifBuilder(Endian::Big).Ascii(36867, "2004:06:22 xx:xx:xx").Jpeg());
    EXPECT_EQ(m_info.CameraDate, "2004:06:22 xx:xx:xx");
    EXPECT_EQ(m_info.PictureDate, "");
    EXPECT_FALSE(m_info.DatesDiffer);
    EXPECT_EQ(Line(1), "        Date: 01/02/2003 4:05:06 AM  Thursday");
}

TEST(ExposureTime, Texts) {
    EXPECT_EQ(ExposureTimeText(1, 125), "1/125s");
    EXPECT_EQ(ExposureTimeText(10, 2500), "1/250s");
    EXPECT_EQ(ExposureTimeText(3, 5), "1/2s");
    EXPECT_EQ(ExposureTimeText(4, 5), "00m 01s");
    EXPECT_EQ(ExposureTimeText(1, 1), "00m 01s");
    EXPECT_EQ(ExposureTimeText(5, 2), "00m 02s"); // halves to even
    EXPECT_EQ(ExposureTimeText(30, 1), "00m 30s");
    EXPECT_EQ(ExposureTimeText(1250, 10), "02m 05s");
    EXPECT_EQ(ExposureTimeText(2147483647, 1), "35791394m 07s");
    EXPECT_EQ(ExposureTimeText(0, 5), "0/5s");
    EXPECT_EQ(ExposureTimeText(0, 0), "0");
    EXPECT_EQ(ExposureTimeText(7, 0), "0");
    EXPECT_EQ(ExposureTimeText(-3, 5), "-3/5s");
}

TEST_F(Tags, BiasTakesLowHalvesInBothOrders) {
    for (const Endian endian : {Endian::Little, Endian::Big}) {
        EXPECT_EQ(BiasOf(ExifBuilder(endian).SignedRational(37380, -2, 6)), "-0.3 EV");
        EXPECT_EQ(BiasOf(ExifBuilder(endian).SignedRational(37380, 2, 3)), "+0.7 EV");
        EXPECT_EQ(BiasOf(ExifBuilder(endian).SignedRational(37380, -1, 100)), "-0.0 EV");
        EXPECT_EQ(BiasOf(ExifBuilder(endian).SignedRational(37380, 65536 + 1, 65536 + 2)),
                  "+0.5 EV");
        EXPECT_EQ(BiasOf(ExifBuilder(endian).SignedRational(37380, 1, 0)), "+Infinity EV");
        EXPECT_EQ(BiasOf(ExifBuilder(endian).SignedRational(37380, 0, 0)), "NaN EV");
    }
    // The sign is asked of the second byte in one order and of the first in the other.
    EXPECT_EQ(BiasOf(ExifBuilder(Endian::Little).SignedRational(37380, 0xFF00, 0x80)), "-2.0 EV");
    EXPECT_EQ(BiasOf(ExifBuilder(Endian::Big).SignedRational(37380, 0xFF00, 0xFF)), "+256.0 EV");
}

TEST_F(Tags, SignOutOfReachCountsAsMinus) {
    ExifBuilder exif(Endian::Big);
    exif.Entry(37380, 10, 1, 8); // data at index -2: the sign is outside, the low half inside
    Read(exif.Jpeg());
    EXPECT_EQ(m_reader.Tag.TagNumerator, -((37380 ^ 0xFFFF) + 1));
}

TEST_F(Tags, OffsetThatDoesNotFitKeepsTheOldOneLessTen) {
    ExifBuilder exif(Endian::Little);
    exif.DataFrom(200).Ascii(271, "Old").Entry(36867, 2, 20, 40000).Entry(274, 3, 1, 40000);
    Read(exif.Jpeg());
    EXPECT_EQ(m_info.CameraDateOffset, 180);
    EXPECT_EQ(m_info.ExpOrientation, 200); // the value keeps the old one as it is
}

TEST_F(Tags, DataOutOfReachLeaveTheNumbersOfTheEntryBefore) {
    ExifBuilder exif(Endian::Big);
    exif.Rational(33434, 1, 60).Entry(37380, 10, 1, 21000).Entry(33437, 5, 1, 30000);
    Read(exif.Jpeg());
    // A sign out of reach is a minus, so the stale 1/60 becomes -65535/60.
    EXPECT_EQ(m_info.ExpBias, "-1092.3 EV");
    EXPECT_EQ(m_info.ExpAperture, "");
    ExifBuilder next(Endian::Big);
    next.Rational(33434, 1, 60).Entry(33437, 5, 1, 30000);
    EXPECT_EQ(Read(next.Jpeg()).ExpAperture, "f/0.0");
}

TEST_F(Tags, TopBitOverflowsAndKeepsThePart) {
    ExifBuilder exif(Endian::Little);
    exif.Rational(33437, 56, 10).Rational(33434, 0x80000001U, 2);
    Read(exif.Jpeg());
    EXPECT_EQ(m_info.ExpTime, "00m 28s"); // 56 is kept, 2 is new
}

TEST_F(Tags, TextOutOfReachIsEmptyOrWhatCanBeRead) {
    ExifBuilder exif(Endian::Big);
    exif.Ascii(271, "Maker").Entry(272, 2, 9, 25000);
    EXPECT_EQ(Read(exif.Jpeg()).CameraName, "Maker ");
    std::string jpeg = ExifBuilder(Endian::Big).Entry(272, 2, 9, 20009).Jpeg();
    jpeg.resize(20021, '\0');
    EXPECT_EQ(Read(jpeg + " Xyz").CameraName, " X"); // two bytes of the buffer were left
}

TEST_F(Tags, ValuesOutsideTheTables) {
    ExifBuilder exif(Endian::Big);
    exif.Short(34850, 9).Short(34850, 10).Short(37383, 8).Short(37383, 9).Short(37385, 0xFF01);
    Read(exif.Jpeg());
    EXPECT_EQ(m_info.ExpProgram, "reserved");
    EXPECT_EQ(m_info.ExpMeter, "other");
    EXPECT_EQ(Line(3), "  Meter mode: other");
    EXPECT_TRUE(m_info.FlashFired); // 0xFF01 does not fit: the 9 of the entry before is odd
}

TEST_F(Tags, FocusByTheDistancesParts) {
    struct Case {
        std::uint32_t numerator, denominator;
        std::string text, shortText;
    };
    for (const Case& c : {Case{7, 1, "AUTOFOCUS", ", AF"}, Case{7, 0, "INFINITY", ", Inf"},
                          Case{0, 1, "INFINITY", ", Inf"}}) {
        Read(ExifBuilder(Endian::Big).Rational(37382, c.numerator, c.denominator).Jpeg());
        EXPECT_EQ(m_info.ExpFocus, c.text);
        EXPECT_EQ(m_info.ExpFocusShort, c.shortText);
    }
}

TEST_F(Tags, OrientationAndFactorStayWithoutTheirTags) {
    Read(ExifBuilder(Endian::Big).Ascii(272, "Canon EOS 5").Short(274, 6).Jpeg());
    const std::string path = m_folder.Write("b.jpg", ExifBuilder(Endian::Big).Jpeg());
    m_info.Filename = path;
    m_reader.ReadPictureInfo(m_info);
    EXPECT_EQ(m_info.ExpOrientation, 6);
    EXPECT_EQ(m_info.FilmFactor, 1.6F);
    EXPECT_EQ(m_info.CameraName, "");
}

TEST_F(Tags, WalkGoesOnBehindADirectoryWithoutEnd) {
    // 1250 entries of nothing, an orientation at index 15000, another behind it.
    ByteWriter entries(Endian::Big);
    for (int i = 0; i < 1250; ++i) entries.Word(999).Word(3).Long(1).Long(0);
    entries.Word(274).Word(3).Long(1).Word(3).Word(0);
    entries.Word(274).Word(3).Long(1).Word(8).Word(0);
    const std::string head = ExifBuilder(Endian::Big).Tiff().substr(0, 10);
    Read(head + entries.Bytes());
    EXPECT_EQ(m_info.ExpOrientation, 3);
}

TEST_F(Tags, JumpsOnceAndNeverHangs) {
    // What stands behind the pointer in the first directory is not seen.
    ExifBuilder exif(Endian::Big);
    exif.Entry(34665, 4, 1, 300).Short(274, 5);
    ByteWriter second(Endian::Big);
    second.Word(1).Word(34850).Word(3).Long(1).Word(1).Word(0).Long(0);
    std::string tiff = exif.Tiff();
    tiff.resize(300);
    Read(tiff + second.Bytes());
    EXPECT_EQ(m_info.ExpProgram, "Manual");
    EXPECT_EQ(m_info.ExpOrientation, 0);
    // A directory that points to itself ends by the number of its entries.
    Read(ExifBuilder(Endian::Big).Short(274, 2).Entry(34665, 4, 1, 8).Jpeg());
    EXPECT_EQ(m_info.ExpOrientation, 2);
    // A pointer in front of the buffer leaves the tag standing and jumps on downwards.
    Read(ExifBuilder(Endian::Big).Entry(34665, 2, 65535, 0).Jpeg());
    EXPECT_EQ(m_info.PanelRows.size(), 13U);
}
