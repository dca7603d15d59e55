// Headers of files, whatever their kind.
#include "FitsFiles.h"

#include "sky/headers/FrameHeader.h"
#include "sky/place/SkyRows.h"
#include "support/ContainerFiles.h"
#include "support/ExifBuilder.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::testing;

TEST(FrameHeader, NumbersAreAsPeopleWriteThem) {
    const TestFolder folder;
    const auto read = [&](const std::vector<FitsWord>& words) {
        return ReadFrameHeader(folder.Write("a.fits", NightSky(20, 10, words)), {});
    };
    EXPECT_EQ(read({{"EXPTIME", "3.0D+02"}}).exposure, "300");
    EXPECT_EQ(read({{"CCD-TEMP", "263.15"}}).temperature, "-10");
    EXPECT_EQ(read({{"CCD-TEMP", "-9.8"}}).temperature, "-9.8");
}

// Where the telescope points while it takes darks is nobody's target.
TEST(FrameHeader, CalibrationFramesHaveNoTarget) {
    const TestFolder folder;
    for (const char* type : {"'Dark'", "'FlatDark'", "'Zero Frame'"}) {
        SCOPED_TRACE(type);
        const FrameHeader header =
            ReadFrameHeader(folder.Write("a.fits", NightSky(20, 10,
                                                            {{"IMAGETYP", type},
                                                             {"DATE-OBS", "'2024-11-05T12:00:00'"},
                                                             {"RA", "0"},
                                                             {"DEC", "0"},
                                                             {"TELALT", "-20"},
                                                             {"EXPTIME", "60"}})),
                            {});
        EXPECT_FALSE(header.where.target.has_value());
        EXPECT_FALSE(header.where.altitude.has_value());
        EXPECT_EQ(SkyRowOf(header.where, {}, Site{48.1, 11.6, 520}).fault, "");
    }
}

TEST(FrameHeader, KindsByTheirWords) {
    EXPECT_EQ(KindOf("Light Frame"), FrameKind::Light);
    EXPECT_EQ(KindOf("Master Flat"), FrameKind::Flat);
    for (const char* dark : {"Dark Frame", "FlatDark", "dark flat"})
        EXPECT_EQ(KindOf(dark), FrameKind::Dark) << dark;
    for (const char* bias : {"zero", "Zero Frame", "Master Zero", "Offset"})
        EXPECT_EQ(KindOf(bias), FrameKind::Bias) << bias;
}

TEST(FrameHeader, RawFilesInBoxesTellWhereTheyWere) {
    const TestFolder folder;
    ExifBuilder first(Endian::Little);
    first.Ascii(272, "CAM 3");
    ExifBuilder exif(Endian::Little);
    exif.Ascii(0x9003, "2024:11:05 23:00:00").Ascii(0x9011, "+01:00");
    ExifBuilder satellites(Endian::Little);
    satellites.Entry(1, 2, 2, 'S').Rational(2, 331, 10).Entry(3, 2, 2, 'W').Rational(4, 705, 10);
    satellites.Rational(6, 2200, 1);
    const std::string path =
        folder.Write("a.cr3", RawBoxes(first.Tiff(), exif.Tiff(), exif.Tiff(), satellites.Tiff()));
    const FrameHeader header = ReadFrameHeader(path, {});
    EXPECT_EQ(header.camera, "CAM 3");
    EXPECT_EQ(header.where.site, (Site{-33.1, -70.5, 2200}));
}
