// Files that are damaged, odd, or say how they were held.
#include "LoadedFile.h"
#include "PictureFiles.h"
#include "RawFiles.h"
#include "support/ContainerFiles.h"
#include "support/ExifBuilder.h"
#include "support/TestFolder.h"

#include "imaging/ImgX.h"
#include "imaging/exif/FileBytes.h"

#include <QColorSpace>
#include <QPainter>
#include <QStringList>

#include <gtest/gtest.h>
#include <zlib.h>

namespace tarn::testing {
namespace {

using namespace std::string_literals;

std::string Checked(const std::string& name, const std::string& data) {
    const std::string body = name + data;
    const auto sum = ::crc32(0, reinterpret_cast<const Bytef*>(body.data()), uInt(body.size()));
    return HighFirst(data.size(), 4) + body + HighFirst(sum, 4);
}

// The PNG file with one more chunk behind its header, or in front of its end.
std::string WithChunk(std::string png, const std::string& name, const std::string& data,
                      bool atEnd = false) {
    return png.insert(atEnd ? png.size() - 12 : 33, Checked(name, data));
}

// A WebP file in its extended form, with camera data.
std::string WebPWithExif(const QImage& picture, const std::string& tiff) {
    const std::string simple = PictureBytes(picture, "WEBP");
    std::string head = "\x08"s + std::string(3, '\0');
    head += LowFirst(std::uint64_t(picture.width() - 1), 3);
    head += LowFirst(std::uint64_t(picture.height() - 1), 3);
    const std::string chunks =
        RiffChunk("VP8X", head) + simple.substr(12) + RiffChunk("EXIF", tiff);
    return "RIFF" + LowFirst(chunks.size() + 4, 4) + "WEBP" + chunks;
}

struct TiffPlan {
    unsigned orientation = 1;
    unsigned packing = 1;
    int lost = -1; // strip that stands beyond the file
    bool highFirst = false;
};

// Uncompressed, ten rows a strip.
std::string Tiff(const QImage& picture, const TiffPlan& plan) {
    constexpr int kRows = 10;
    const auto number = [&](std::uint64_t value, int size) {
        return plan.highFirst ? HighFirst(value, size) : LowFirst(value, size);
    };
    const int strips = (picture.height() + kRows - 1) / kRows;
    const auto width = std::uint64_t(picture.width());
    const std::uint64_t stripBytes = width * kRows * 3;
    const std::uint64_t lists = 8 + 2 + 11 * 12 + 4;
    const std::uint64_t pixels = lists + 8 + std::uint64_t(strips) * 8;
    std::string bytes = plan.highFirst ? "MM" : "II";
    bytes += number(42, 2) + number(8, 4) + number(11, 2);
    const auto entry = [&](unsigned tag, unsigned type, std::uint64_t count, std::uint64_t value) {
        const bool isShort = type == 3 && count == 1;
        bytes += number(tag, 2) + number(type, 2) + number(count, 4) +
                 (isShort ? number(value, 2) + "\0\0"s : number(value, 4));
    };
    entry(256, 4, 1, width);
    entry(257, 4, 1, std::uint64_t(picture.height()));
    entry(258, 3, 3, lists);
    entry(259, 3, 1, plan.packing);
    entry(262, 3, 1, 2);
    entry(273, 4, std::uint64_t(strips), lists + 8);
    entry(274, 3, 1, plan.orientation);
    entry(277, 3, 1, 3);
    entry(278, 4, 1, kRows);
    entry(279, 4, std::uint64_t(strips), lists + 8 + std::uint64_t(strips) * 4);
    entry(284, 3, 1, 1);
    bytes += number(0, 4) + number(8, 2) + number(8, 2) + number(8, 2) + "\0\0"s;
    for (int strip = 0; strip < strips; ++strip)
        bytes += number(
            pixels + std::uint64_t(strip) * stripBytes + (strip == plan.lost ? 10'000'000 : 0), 4);
    for (int strip = 0; strip < strips; ++strip) bytes += number(stripBytes, 4);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            for (const int level : {qRed(pixel), qGreen(pixel), qBlue(pixel)}) bytes += char(level);
        }
    return bytes;
}

// With masks of red, green, blue and alpha; from the bottom to the top.
std::string MaskedBitmap(const QImage& picture, int bits,
                         const std::array<std::uint32_t, 4>& masks) {
    constexpr std::uint64_t kHeader = 108;
    std::string pixels;
    for (int y = picture.height() - 1; y >= 0; --y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            const int levels[] = {qRed(pixel), qGreen(pixel), qBlue(pixel), qAlpha(pixel)};
            std::uint32_t number = 0;
            for (std::size_t i = 0; i < masks.size(); ++i)
                if (levels[i] > 127) number |= masks[i];
            pixels += LowFirst(number, bits / 8);
        }
        pixels.resize((pixels.size() + 3) / 4 * 4);
    }
    std::string bytes = "BM"s + LowFirst(14 + kHeader + pixels.size(), 4) + LowFirst(0, 4) +
                        LowFirst(14 + kHeader, 4) + LowFirst(kHeader, 4) +
                        LowFirst(std::uint64_t(picture.width()), 4) +
                        LowFirst(std::uint64_t(picture.height()), 4) + LowFirst(1, 2) +
                        LowFirst(std::uint64_t(bits), 2) + LowFirst(3, 4);
    bytes.resize(54);
    for (const std::uint32_t mask : masks) bytes += LowFirst(mask, 4);
    bytes.resize(14 + kHeader);
    return bytes + pixels;
}

// An array of one bitmap; places count from the array's beginning.
std::string ArrayOf(std::string bitmap) {
    constexpr int kHead = 14;
    bitmap.replace(10, 4, LowFirst(NumberAt(bitmap, 10, 4, false) + kHead, 4));
    return "BA" + LowFirst(40, 4) + std::string(8, '\0') + bitmap;
}

// With the short header of the first bitmaps, 24 bits a pixel.
std::string OldBitmap(const QImage& picture) {
    const auto width = std::size_t(picture.width());
    std::string bytes = "BM" + LowFirst(0, 4) + LowFirst(0, 4) + LowFirst(26, 4) + LowFirst(12, 4) +
                        LowFirst(width, 2) + LowFirst(std::uint64_t(picture.height()), 2) +
                        LowFirst(1, 2) + LowFirst(24, 2);
    for (int y = picture.height() - 1; y >= 0; --y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            for (const int level : {qBlue(pixel), qGreen(pixel), qRed(pixel)}) bytes += char(level);
        }
        bytes.resize(bytes.size() + (4 - width * 3 % 4) % 4);
    }
    return bytes;
}

const QColor kUnread(128, 128, 128);

} // namespace

TEST(Upright, ContainersThatSayHowTheyWereHeldAreTurned) {
    LoadedFile files;
    const QImage stored = TellTale(60, 40);
    const char* const upright[] = {"rgby", "gryb", "ybgr", "byrg", "rbgy", "bryg", "ygbr", "gyrb"};
    for (unsigned orientation = 1; orientation <= 8; ++orientation) {
        const std::string tiff = ExifBuilder(Endian::Big).Short(274, orientation).Tiff();
        const QSize size = orientation < 5 ? QSize(60, 40) : QSize(40, 60);
        const std::string png = PictureBytes(stored, "PNG");
        for (const std::string& bytes :
             {WithChunk(png, "eXIf", tiff), WithChunk(png, "eXIf", tiff, true),
              WebPWithExif(stored, tiff), Tiff(stored, {orientation}),
              Tiff(stored, {orientation, 1, -1, true})}) {
            const ImgX picture = files.Load(bytes);
            EXPECT_EQ(files.error, "");
            EXPECT_EQ(Quarters(picture.SystemPicture()), upright[orientation - 1]) << orientation;
            EXPECT_EQ(picture.SystemPicture().size(), size) << orientation;
            EXPECT_EQ(ImgX::ReadFileInfo(files.folder.Path() + "/a.jpg"), size) << orientation;
            EXPECT_EQ(picture.IsUpright(), orientation != 1) << orientation;
        }
    }
}

TEST(Gaps, TiffFilesAreReadInPart) {
    LoadedFile files;
    const QImage whole = TellTale(60, 40);
    const std::string bytes = Tiff(whole, {});
    EXPECT_EQ(Quarters(files.Load(bytes).SystemPicture()), "rgby");
    EXPECT_EQ(files.error, "");
    // One strip is lost, then all behind a cut; turned ones are so all the same.
    const QImage lost = files.Load(Tiff(whole, {3, 1, 1})).SystemPicture();
    EXPECT_NE(files.error, "");
    EXPECT_EQ(lost.pixelColor(10, 25), kUnread);
    EXPECT_EQ(Quarters(lost), "ybgr");
    const QImage cut = files.Load(bytes.substr(0, bytes.size() / 2)).SystemPicture();
    EXPECT_NE(files.error, "");
    EXPECT_EQ(cut.size(), whole.size());
    EXPECT_EQ(cut.pixelColor(5, 5), QColor(255, 0, 0));
    EXPECT_EQ(cut.pixelColor(5, 35), kUnread);
    // Nothing of it: no picture, and the library's own word.
    EXPECT_FALSE(files.Load(Tiff(whole, {1, 34712})).HasImage());
    EXPECT_NE(files.error.find("34712"), std::string::npos) << files.error;
    EXPECT_FALSE(files.Load(bytes.substr(0, 100)).HasImage());
    EXPECT_NE(files.error, "");
}

// What is wrong with a profile is told by the window; the toolkit would write a line for each.
TEST(Gaps, TheConsoleHearsNothingOfBrokenProfiles) {
    static QStringList heard;
    heard.clear();
    QImage picture = TellTale(60, 40);
    picture.setColorSpace(QColorSpace::SRgb);
    for (const char* kind : {"TIFF", "PNG"}) {
        std::string bytes = PictureBytes(picture, kind);
        if (const auto at = bytes.find("mntrRGB "); at != std::string::npos)
            bytes.replace(at, 8, "mntrLab ");
        LoadedFile files;
        auto* before = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { heard << text; });
        EXPECT_TRUE(files.Load(bytes).HasImage()) << kind;
        qInstallMessageHandler(before);
    }
    EXPECT_EQ(heard, QStringList());
}

TEST(Gaps, BitmapsHaveWhateverMasks) {
    LoadedFile files;
    const QImage picture = TellTale(60, 40);
    struct Case {
        int bits;
        std::array<std::uint32_t, 4> masks;
    };
    for (const Case& c : {Case{32, {0x3FF00000, 0xFFC00, 0x3FF, 0}},
                          {32, {0xFF000000, 0xFF0000, 0xFF00, 0xFF}},
                          {32, {0xFF, 0xFF00, 0xFF0000, 0}},
                          {16, {0xF00, 0xF0, 0xF, 0xF000}},
                          {16, {0xF800, 0x7E0, 0x1F, 0}}}) {
        const std::string bytes = MaskedBitmap(picture, c.bits, c.masks);
        const QImage shown = files.Load(bytes).SystemPicture();
        EXPECT_EQ(files.error, "") << std::hex << c.masks[0];
        EXPECT_EQ(shown, picture.convertToFormat(shown.format())) << std::hex << c.masks[0];
        const QImage cut = files.Load(bytes.substr(0, bytes.size() - 1000)).SystemPicture();
        EXPECT_EQ(files.error, "The file ends too early");
        EXPECT_EQ(cut.pixelColor(5, 0), kUnread);
        EXPECT_EQ(cut.pixelColor(5, 39), picture.pixelColor(5, 39));
    }
}

TEST(Gaps, TheFirstBitmapOfAnArrayIsShown) {
    LoadedFile files;
    const ImgX picture = files.Load(ArrayOf(PictureBytes(TellTale(60, 40), "BMP")));
    EXPECT_EQ(files.error, "");
    EXPECT_EQ(Quarters(picture.SystemPicture()), "rgby");
}

TEST(Gaps, WhatThePainterFilledUpIsSaid) {
    LoadedFile files;
    QImage picture = TellTale(600, 400);
    QPainter(&picture).drawEllipse(20, 30, 500, 300);
    for (const std::string& bytes :
         {PictureBytes(picture, "BMP"), ArrayOf(PictureBytes(picture, "BMP")), OldBitmap(picture),
          // One pixel, a GIF file of its own with nothing behind the picture.
          "GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\1\0\1\0\0\2\2D\1\0"s}) {
        EXPECT_TRUE(files.Load(bytes).HasImage());
        EXPECT_EQ(files.error, "");
        files.Load(bytes.substr(0, bytes.size() - 4));
        EXPECT_NE(files.error, "");
    }
    for (const std::string& bytes : {ArrayOf(PictureBytes(picture, "BMP")), OldBitmap(picture)}) {
        const QImage half = files.Load(bytes.substr(0, bytes.size() / 2)).SystemPicture();
        EXPECT_EQ(half.pixelColor(5, 150), kUnread);
        EXPECT_EQ(half.pixelColor(5, 395), picture.pixelColor(5, 395)); // rows begin at the bottom
    }
}

TEST(Gaps, OneColourOfADeepPngShinesThrough) {
    LoadedFile files;
    constexpr int kSide = 4;
    std::string rows;
    for (int y = 0; y < kSide; ++y) {
        rows += '\0';
        for (int x = 0; x < kSide; ++x)
            rows += HighFirst(x == 0 ? 0x1234 : 0xC0C0, 2) + HighFirst(0x8080, 2) + HighFirst(0, 2);
    }
    std::string packed(200, '\0');
    uLongf length = packed.size();
    ASSERT_EQ(::compress(reinterpret_cast<Bytef*>(packed.data()), &length,
                         reinterpret_cast<const Bytef*>(rows.data()), rows.size()),
              Z_OK);
    packed.resize(length);
    const std::string png =
        "\x89PNG\r\n\x1A\n"s +
        Checked("IHDR", HighFirst(kSide, 4) + HighFirst(kSide, 4) + "\x10\2\0\0\0"s) +
        Checked("tRNS", "\x12\x34\x80\x80\0\0"s) + Checked("IDAT", packed) + Checked("IEND", "");
    const QImage shown = files.Load(png).SystemPicture();
    ASSERT_FALSE(shown.isNull()) << files.error;
    EXPECT_EQ(qAlpha(shown.pixel(0, 1)), 0);
    EXPECT_EQ(shown.pixelColor(2, 1), QColor(192, 128, 0));
}

TEST(Raw, DamagedDataAreSaidWhateverStandsForThem) {
    LoadedFile files;
    const QImage preview = TellTale(60, 40).mirrored(true, false);
    const std::string whole =
        RawFile(TellTale(120, 80), JpegBytes(preview), preview.size(), 1).bytes;
    const std::string cut = whole.substr(0, whole.size() - 120 * 80);
    const ImgX own = files.Load(cut);
    EXPECT_NE(files.error, "");
    EXPECT_EQ(Quarters(own.SystemPicture()), "gryb"); // the camera's own
    EXPECT_EQ(own.SystemPicture().size(), QSize(120, 80));
    // Without one there is none, and the error all the same; also where packed data are not found,
    // over which the library passes.
    std::string bare = RawFile(TellTale(120, 80), "", QSize(1, 1), 1).bytes;
    EXPECT_FALSE(files.Load(bare.substr(0, bare.size() - 120 * 40)).HasImage());
    EXPECT_NE(files.error, "");
    bare[bare.find("\3\1\3\0\1\0\0\0\1\0"s, 512) + 8] = 7; // packing
    EXPECT_FALSE(files.Load(bare).HasImage());
    EXPECT_EQ(files.error, "Data of this raw file are missing or damaged");
}

} // namespace tarn::testing
