#include "Reading.h"

using namespace tarn;
using namespace tarn::testing;

namespace {

using Rows = std::vector<std::string>;

class Panel : public Reading {
protected:
    std::string OfSize(std::string bytes, std::size_t size) {
        bytes.resize(size);
        return bytes;
    }
};

} // namespace

TEST_F(Panel, OfACanonPicture) {
    m_info.ImageWidth = 3504;
    m_info.ImageHeight = 2336;
    Read(OfSize(CanonPicture(), 2411725), "IMG_1042.JPG");
    EXPECT_EQ(
        m_info.PanelRows,
        (Rows{"   File name: IMG_1042.JPG", "Picture date: 06/22/2004 8:15:30 PM  Tuesday",
              "        Size: 8.2 Megapixel - 3504 x 2336 - 2.3 MB",
              "  Meter mode: [(O)] Evaluative", "    Exposure: Aperture Priority - 1/125s - f/5.6",
              "              0.0 EV - 400 ISO", "Focal length: 50.0mm - 80.0mm (film) - 1.6x",
              "        Lens: 17-85mm", "    Settings: Quality> Fine     Sharpening> Normal",
              "                Focus> One Shot   Contrast> Normal",
              "                Flash> OFF      Saturation> Normal",
              "                                   WB> Auto", "      Camera: Canon EOS 20D"}));
    EXPECT_EQ(m_info.ExpCamera, "EOS ");
    EXPECT_EQ(m_info.ExpMeter, "Pattern");
    EXPECT_EQ(m_info.ExpFocus, "One Shot AF");
    EXPECT_EQ(m_info.ExpFocusShort, ", One Shot AF-Fine-Normal-Normal");
    EXPECT_EQ(m_info.ExpSizeLine, "8.2 Mp 3504 x 2336 - 2.3 MB");
    EXPECT_EQ(m_info.MpixelText, "8.2 Mp");
    EXPECT_FALSE(m_info.NoExif);
}

TEST_F(Panel, OfANikonPicture) {
    m_info.ImageWidth = 3008;
    m_info.ImageHeight = 2000;
    Read(OfSize(NikonPicture(), 1992294), "DSC_0417.JPG");
    EXPECT_EQ(
        m_info.PanelRows,
        (Rows{"   File name: DSC_0417.JPG", "Picture date: 07/04/2005 9:02:11 PM  Monday",
              "        Size: 6.0 Megapixel - 3008 x 2000 - 1.9 MB", "  Meter mode: Pattern",
              "    Exposure: Apeture priority - 1/250s - f/8.0", "              +0.3 EV - 200 ISO",
              "Focal length: 70.0mm", "        Lens: 18-70mm f/3.5-4.5",
              "    Settings: Quality> FINE     Sharpening> AUTO",
              "                Focus> AF-S           Tone> AUTO",
              "                Flash> OFF      ", "                   WB> AUTO     ",
              "      Camera: NIKON D70"}));
    EXPECT_EQ(m_info.ExpFocusShort, ", AF-S-FINE-AUTO-AUTO");
}

TEST_F(Panel, WithoutCameraDataHasThreeRowsOverTheOldLines) {
    Read(CanonPicture());
    BeginPicture(m_info, m_folder.Write("b.jpg", "no picture"));
    m_info.FileDate = "11/05/2023 9:07:03 AM";
    m_reader.ReadPictureInfo(m_info);
    EXPECT_EQ(m_info.PanelRows,
              (Rows{"   File name: b.jpg", "        Date: 11/05/2023 9:07:03 AM  Sunday",
                    "        Size: 0.0 Megapixel - 0 x 0 - 0 KB"}));
    EXPECT_TRUE(m_info.NoExif);
    EXPECT_EQ(m_info.CameraName, "");
    EXPECT_EQ(Line(12), "      Camera: Canon EOS 20D");
    EXPECT_EQ(m_info.CameraDate, "2004:06:22 20:15:30");
}

TEST_F(Panel, SizeBorderIsDecimalAndItsUnitBinary) {
    EXPECT_EQ(Read(std::string(999999, 'x')).FileSizeText, "977 KB");
    EXPECT_EQ(Read(std::string(1000000, 'x')).FileSizeText, "1.0 MB");
    EXPECT_EQ(Read(std::string(512, 'x')).FileSizeText, "1 KB");
}

TEST_F(Panel, WithoutExposureTagsKeepsThirteenRows) {
    Read(ExifBuilder(Endian::Big).Ascii(271, "Maker").Ascii(272, "X1").Jpeg());
    EXPECT_EQ(m_info.PanelRows.size(), 13U);
    for (const std::size_t line : {3U, 4U, 5U, 6U, 7U, 8U, 9U, 10U, 11U}) EXPECT_EQ(Line(line), "");
    EXPECT_EQ(Line(12), "      Camera: Maker X1");
    EXPECT_EQ(m_info.ExpCamera, "Maker ");
}

TEST_F(Panel, ManualLensUntilAnApertureIsStated) {
    Read(ExifBuilder(Endian::Big).Rational(33434, 1, 60).Rational(37386, 50, 1).Jpeg());
    EXPECT_EQ(Line(4), "    Exposure: 1/60s");
    EXPECT_EQ(Line(5), "              ");
    EXPECT_EQ(Line(6), "Focal length: Manual lens");
    Read(ExifBuilder(Endian::Big).Rational(33437, 28, 10).Rational(37386, 50, 1).Jpeg());
    EXPECT_EQ(Line(4), "    Exposure:  - f/2.8");
    EXPECT_EQ(Line(6), "Focal length: 50.0mm");
}

TEST_F(Panel, FilmFocalLengthOverridesTheSensors) {
    ExifBuilder exif(Endian::Big);
    exif.Ascii(272, "KODAK DX6490 ZOOM DIGITAL CAMERA").Rational(33437, 28, 10);
    exif.Rational(37386, 63, 10);
    EXPECT_EQ(Read(exif.Jpeg()).CameraDataLines[6], "Focal length: 6.3mm - 38.0mm (film) - 0.8x");
    EXPECT_EQ(m_info.ExpCamera, "DX6490 ");
    Read(exif.Short(41989, 75).Jpeg());
    EXPECT_EQ(Line(6), "Focal length: 6.3mm - 75mm (film) - 1.5x");
    EXPECT_EQ(m_info.ExpMagnification, "1.5x");
    Read(ExifBuilder(Endian::Big).Rational(33434, 1, 9).Short(41989, 75).Jpeg());
    EXPECT_EQ(Line(6), "Focal length: 75mm (film) - 1.5x");
    Read(ExifBuilder(Endian::Big).Rational(33434, 1, 9).Short(41989, 0).Jpeg());
    EXPECT_EQ(Line(6), "Focal length: Manual lens");
}

TEST_F(Panel, CameraThatIsAlwaysInFocus) {
    ExifBuilder exif(Endian::Big);
    exif.Ascii(272, "KODAK DC240 ZOOM DIGITAL CAMERA").Short(37385, 1).Rational(41493, 140, 1);
    Read(exif.Jpeg());
    EXPECT_EQ(Line(4), "    Exposure: Program normal - ");
    EXPECT_EQ(Line(5), "               - 140 ISO");
    EXPECT_EQ(Line(9), "       Focus: Autofocus");
    EXPECT_EQ(Line(10), "       Flash: ON");
    EXPECT_EQ(m_info.ExpFocusShort, ", AF");
    EXPECT_EQ(m_info.ExpFlashShort, ", Flash");
    Read(ExifBuilder(Endian::Big).Rational(37382, 0, 1).Rational(33434, 1, 9).Jpeg());
    EXPECT_EQ(Line(9), "       Focus: INFINITY");
    EXPECT_EQ(Line(10), "       Flash: OFF");
}

TEST_F(Panel, TextsAreCodePageCharacters) {
    Read(ExifBuilder(Endian::Big).Ascii(272, std::string_view("Cam\xE9ra \0X\x80", 10)).Jpeg());
    EXPECT_EQ(Line(12), std::string("      Camera: Caméra \0X€", 27));
    EXPECT_EQ(m_info.PanelRows[12], "      Camera: Caméra X€");
    Read(ExifBuilder(Endian::Big).Ascii(272, "Two\nrows \x7F.").Jpeg());
    EXPECT_EQ(m_info.PanelRows[12], "      Camera: Two rows  .");
}
