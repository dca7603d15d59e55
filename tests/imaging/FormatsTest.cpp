// Files that need a library of their own, and the colours that pictures mean.
#include "LoadedFile.h"
#include "PictureFiles.h"
#include "RawFiles.h"
#include "support/TestFolder.h"

#include "imaging/ImgX.h"

#include <QBuffer>
#include <QColorSpace>

#include <gtest/gtest.h>
#include <lcms2.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

namespace tarn::testing {
namespace {} // namespace

TEST(Raw, TheCamerasPictureComesFirstAndTheDevelopedForAllPixels) {
    LoadedFile files;
    const QImage preview = TellTale(60, 40).mirrored(true, false);
    const std::string bytes =
        RawFile(TellTale(120, 80), JpegBytes(preview), preview.size(), 1).bytes;
    ImgX picture = files.Load(bytes, QSize(50, 30));
    ASSERT_TRUE(picture.HasImage()) << files.error;
    EXPECT_EQ(picture.Width(), 120);
    EXPECT_EQ(picture.Height(), 80);
    EXPECT_EQ(picture.SystemPicture().size(), QSize(45, 30));
    EXPECT_EQ(Quarters(picture.SystemPicture()), "gryb");
    EXPECT_EQ(Quarters(picture.FullPicture()), "rgby");
    EXPECT_EQ(picture.FullPicture().size(), QSize(120, 80));
    // Too small for the box: developed at half size.
    EXPECT_EQ(
        Quarters(files
                     .Load(RawFile(TellTale(240, 160), JpegBytes(preview), preview.size(), 1).bytes,
                           QSize(100, 70))
                     .SystemPicture()),
        "rgby");
}

TEST(Raw, IsTurnedByItsOwnOrientation) {
    LoadedFile files;
    const QImage preview = TellTale(60, 40);
    const std::string bytes =
        RawFile(TellTale(120, 80), JpegBytes(preview), preview.size(), 6).bytes;
    for (const QSize wanted : {QSize(30, 50), QSize()}) {
        ImgX picture = files.Load(bytes, wanted);
        EXPECT_TRUE(picture.IsUpright());
        EXPECT_EQ(picture.Width(), 80);
        EXPECT_EQ(picture.Height(), 120);
        EXPECT_EQ(Quarters(picture.SystemPicture()), "bryg") << wanted.width();
    }
}

TEST(Raw, SensorsWithoutFiltersAreGrey) {
    LoadedFile files;
    QImage half(120, 80, QImage::Format_RGB32);
    half.fill(Qt::black);
    for (int y = 0; y < 80; ++y)
        for (int x = 60; x < 120; ++x) half.setPixel(x, y, qRgb(255, 255, 255));
    RawFile raw(half, "", QSize(1, 1), 1);
    const std::size_t meaning =
        raw.bytes.find(std::string("\x06\x01\x03\x00\x01\x00\x00\x00\x23\x80", 10));
    ASSERT_NE(meaning, std::string::npos);
    raw.bytes.replace(meaning + 8, 2, "\x4C\x88"); // linear, one sample a pixel
    const ImgX picture = files.Load(raw.bytes);
    EXPECT_EQ(files.error, "");
    const QImage shown = picture.SystemPicture();
    EXPECT_GT(qGray(shown.pixel(100, 40)), 200);
    EXPECT_LT(qGray(shown.pixel(20, 40)), 20);
}

TEST(Raw, WhatIsRefusedIsSaidAndPlainTiffFilesAreNotMeant) {
    LoadedFile files;
    const std::string whole = RawFile(TellTale(120, 80), "", QSize(0, 0), 1).bytes;
    for (const std::size_t length : {40U, 600U, 1500U}) {
        files.Load(whole.substr(0, length));
        EXPECT_NE(files.error, "") << length;
        // Nor does the small picture in it stand for it.
        ImgX picture;
        EXPECT_NE(picture.LoadWithSystemReader(files.folder.Path() + "/a.jpg"), "") << length;
    }
    for (std::size_t length = 0; length < 12; ++length) { // before the first list
        files.Load(whole.substr(0, length));
        EXPECT_NE(files.error, "") << length;
    }
    EXPECT_EQ(Quarters(files.Load(PictureBytes(TellTale(40, 20), "TIFF")).SystemPicture()), "rgby");
    EXPECT_EQ(files.error, "");
}

TEST(Formats, WhatTelephonesWriteIsRead) {
    LoadedFile files;
    const std::string png = files.folder.Write("p.png", PictureBytes(TellTale(64, 48), "PNG"));
    for (const char* name : {"p.avif", "p.jxl", "p.webp"}) {
        const std::string path = files.folder.Path() + "/" + name;
        const std::string command =
            "ffmpeg -nostdin -loglevel error -y -i '" + png + "' -frames:v 1 -pix_fmt " +
            (path.ends_with("jxl") ? "rgb24" : "yuv420p") + " '" + path + "'";
        ASSERT_EQ(std::system(command.c_str()), 0) << name;
        ImgX picture;
        EXPECT_EQ(picture.LoadFile(path, {}), "") << name;
        EXPECT_EQ(Quarters(picture.SystemPicture()), "rgby") << name;
        EXPECT_EQ(ImgX::ReadFileInfo(path), QSize(64, 48)) << name;
        std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
        ImgX cut;
        EXPECT_NE(cut.LoadFile(path, {}), "") << name;
    }
}

// The toolkit here has readers for most of these.
TEST(Formats, DrawingsPagesAndFilmsAreNeverGivenToTheToolkit) {
    LoadedFile files;
    const std::string svg = "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='20'>"
                            "<rect width='20' height='20' fill='red'/></svg>";
    const std::string tga =
        std::string("\0\0\2\0\0\0\0\0\0\0\0\0\4\0\4\0\x18\0", 18) + std::string(48, 'x');
    const std::string mng = std::string("\x8AMNG\r\n\x1A\n", 8) + std::string(60, '\0');
    for (const std::string& bytes :
         {svg, "<?xml version='1.0'?>\n" + svg, tga, mng, std::string("%!PS-Adobe-3.0 EPSF-3.0\n"),
          std::string("%PDF-1.4\n"), std::string("icns\0\0\0\x08", 8),
          std::string("P7\nWIDTH 4\n")}) {
        files.Load(bytes);
        EXPECT_NE(files.error, "") << bytes.substr(0, 8);
        ImgX picture;
        EXPECT_NE(picture.LoadWithSystemReader(files.folder.Path() + "/a.jpg"), "")
            << bytes.substr(0, 8);
        EXPECT_EQ(ImgX::ReadFileInfo(files.folder.Path() + "/a.jpg"), QSize(0, 0));
    }
}

TEST(Formats, KindsOfOldAreRead) {
    LoadedFile files;
    for (const char* format : {"BMP", "ICO", "PBM", "PGM", "PPM", "PNG", "TIFF", "WEBP", "XPM"}) {
        const std::string bytes = PictureBytes(TellTale(32, 32), format);
        ASSERT_NE(bytes, "") << format;
        const ImgX picture = files.Load(bytes);
        EXPECT_EQ(files.error, "") << format;
        EXPECT_EQ(picture.SystemPicture().size(), QSize(32, 32)) << format;
        if (format[1] != 'B' && format[1] != 'G') {
            EXPECT_EQ(Quarters(picture.SystemPicture()), "rgby") << format;
        }
    }
    const std::string gif("GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 35);
    EXPECT_EQ(files.Load(gif).SystemPicture().pixelColor(0, 0), QColor(Qt::red)) << files.error;
}

// Each kept its reader busy for seconds, or took gigabytes, before it found that nothing is there.
TEST(Formats, PartsThatAreOnlyClaimedAreToldAtOnce) {
    const auto little = [](std::uint32_t number) {
        return std::string(reinterpret_cast<const char*>(&number), 4);
    };
    std::string png = PictureBytes(TellTale(32, 32), "PNG").substr(0, 33);
    png += std::string("\x7F\xFF\xFF\xFFtEXt", 8);
    const std::string masks = "BM" + little(0) + little(0) + little(66) + little(40) +
                              little(40000) + little(40000) + little(32 << 16 | 1) + little(3) +
                              std::string(20, '\0') + little(0xFF) + little(0xFF00) +
                              little(0xFF0000) + std::string(64, 'x');
    std::string boxes("\0\0\0\x14"
                      "ftypheic\0\0\0\0heic",
                      20);
    for (int i = 0; i < 2000; ++i)
        boxes += std::string("\0\0\0\x08"
                             "free",
                             8);
    const std::string remarks = "P5\n#" + std::string(1 << 20, 'x') + "\n10 10\n255\n";
    LoadedFile files;
    for (const std::string& bytes : {png, masks, boxes, remarks}) {
        const std::string path = files.folder.Write("a.jpg", bytes);
        if (bytes == png) std::filesystem::resize_file(path, 3ULL << 30);
        const auto begin = std::chrono::steady_clock::now();
        ImgX picture;
        EXPECT_NE(picture.LoadFile(path, {}), "") << bytes.substr(0, 8);
        EXPECT_FALSE(picture.HasImage()) << bytes.substr(0, 8);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1))
            << bytes.substr(0, 8);
    }
}

TEST(Colors, TheProfileSaysWhatTheNumbersMean) {
    LoadedFile files;
    const std::string jpeg = JpegBytes(TellTale(80, 60));
    EXPECT_EQ(Quarters(files.Load(WithProfile(jpeg, SwappedProfile())).SystemPicture()), "bgr?");
    QImage png = TellTale(80, 60);
    png.setColorSpace(QColorSpace::fromIccProfile(QByteArray::fromStdString(SwappedProfile())));
    const ImgX picture = files.Load(PictureBytes(png, "PNG"));
    EXPECT_EQ(Quarters(picture.SystemPicture()), "bgr?");
    EXPECT_EQ(picture.SystemPicture().pixelColor(70, 50), QColor(0, 255, 255)); // yellow before
    EXPECT_EQ(picture.ColorRemark(), "");
    const std::string usual = QColorSpace(QColorSpace::SRgb).iccProfile().toStdString();
    EXPECT_EQ(files.Load(WithProfile(jpeg, usual)).SystemPicture(),
              files.Load(jpeg).SystemPicture());
}

TEST(Colors, GreysAndOtherFormatsToo) {
    LoadedFile files;
    QImage grey(40, 30, QImage::Format_Grayscale8);
    grey.fill(128);
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 1.0);
    cmsHPROFILE linear = cmsCreateGrayProfile(cmsD50_xyY(), curve);
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(linear, nullptr, &size);
    std::string profile(size, '\0');
    cmsSaveProfileToMem(linear, profile.data(), &size);
    cmsCloseProfile(linear);
    cmsFreeToneCurve(curve);
    const std::string jpeg = WithProfile(JpegBytes(grey, JpegKind::Gray), profile);
    EXPECT_NEAR(qGray(files.Load(jpeg).SystemPicture().pixel(20, 15)), 188, 2); // half the light
    // A wide red in JPEG XL lies outside of what the screen has: the others go down.
    const std::string ppm = files.folder.Path() + "/p.ppm";
    const std::string jxl = files.folder.Path() + "/p.jxl";
    QImage red(32, 32, QImage::Format_RGB32);
    red.fill(qRgb(200, 100, 80));
    ASSERT_TRUE(red.save(QString::fromStdString(ppm)));
    const std::string command = "ffmpeg -nostdin -loglevel error -y -color_primaries smpte432 "
                                "-color_trc iec61966-2-1 -i '" +
                                ppm + "' -pix_fmt rgb24 " +
                                "-color_primaries smpte432 -color_trc iec61966-2-1 '" + jxl + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    ImgX picture;
    ASSERT_EQ(picture.LoadFile(jxl, {}), "");
    const QColor shown = picture.SystemPicture().pixelColor(16, 16);
    EXPECT_NEAR(shown.red(), 213, 4);
    EXPECT_NEAR(shown.green(), 93, 4);
}

TEST(Colors, ABrokenProfileIsIgnoredAndSaid) {
    LoadedFile files;
    const std::string jpeg = JpegBytes(TellTale(80, 60));
    const std::string whole = SwappedProfile();
    for (const std::string& profile : {std::string(200, 'x'), whole.substr(0, 150)}) {
        const ImgX picture = files.Load(WithProfile(jpeg, profile));
        EXPECT_EQ(files.error, "");
        EXPECT_EQ(Quarters(picture.SystemPicture()), "rgby");
        EXPECT_EQ(picture.ColorRemark(), "The color profile is broken and was ignored");
    }
    // In a PNG, whose reader says nothing; and one part of two.
    QImage png = TellTale(40, 30);
    png.setColorSpace(QColorSpace(QColorSpace::AdobeRgb));
    std::string bytes = PictureBytes(png, "PNG");
    bytes[bytes.find("iCCP") + 40] ^= 0x55;
    std::string half = WithProfile(jpeg, whole);
    half[half.find("ICC_PROFILE") + 13] = 2;
    for (const std::string& broken : {bytes, half})
        EXPECT_NE(files.Load(broken).ColorRemark(), "") << files.error;
}

} // namespace tarn::testing
