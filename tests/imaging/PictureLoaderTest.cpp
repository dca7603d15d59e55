#include "PictureFiles.h"
#include "support/TestFolder.h"

#include "common/stop_flag.h"
#include "imaging/ImgX.h"
#include "imaging/PictureFormat.h"
#include "imaging/PictureLoader.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <filesystem>

#include <sys/stat.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

class Loading : public ::testing::Test {
protected:
    // What LoadFile made of the bytes: the error text, and the picture in
    // m_picture.
    std::string Load(const std::string& name, const std::string& bytes, QSize wanted = {}) {
        return m_picture.LoadFile(m_folder.Write(name, bytes), wanted);
    }

    std::string At(const std::string& name) const { return m_folder.Path() + "/" + name; }

    TestFolder m_folder;
    ImgX m_picture;
};

std::string BigEndian(std::uint32_t value) {
    return {char(value >> 24), char(value >> 16), char(value >> 8), char(value)};
}

// The header of a PNG file alone.
std::string PngHead(std::uint32_t width, std::uint32_t height) {
    const std::string chunk =
        "IHDR" + BigEndian(width) + BigEndian(height) + std::string("\x8\x2\0\0\0", 5);
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char byte : chunk) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320 : 0);
    }
    return "\x89PNG\r\n\x1A\n" + BigEndian(13) + chunk + BigEndian(~sum) + BigEndian(0) + "IDAT";
}

// Two pixels, red and blue.
constexpr char kGifBytes[] =
    "GIF89a\2\0\1\0\x80\0\0\xFF\0\0\0\0\xFF,\0\0\0\0\2\0\1\0\0\2\2\x44\x0A\0;";
const std::string kGif(kGifBytes, sizeof kGifBytes - 1);

} // namespace

TEST_F(Loading, ReadsFormatsByContentWhateverTheName) {
    const QImage picture = TellTale(64, 48);
    struct Case {
        std::string name, bytes;
    };
    for (const Case& c :
         {Case{"a.jpg", JpegBytes(picture)}, Case{"png.jpg", PictureBytes(picture, "PNG")},
          Case{"jpeg.png", JpegBytes(picture)}, Case{"tiff.gif", PictureBytes(picture, "TIFF")},
          Case{"bmp", PictureBytes(picture, "BMP")},
          Case{"webp.bmp", PictureBytes(picture, "WEBP")},
          Case{"progressive.tif", JpegBytes(picture, JpegKind::Color, 90, true)},
          Case{"\xE4\xFF.jpg", JpegBytes(picture)}}) {
        ASSERT_FALSE(c.bytes.empty()) << c.name << ": no writer for it";
        EXPECT_EQ(Load(c.name, c.bytes), "") << c.name;
        EXPECT_EQ(ImgX::ReadFileInfo(At(c.name)), QSize(64, 48)) << c.name;
        EXPECT_EQ(m_picture.StatusText(), "64 x 48, 32 bit") << c.name;
        EXPECT_EQ(Quarters(m_picture.SystemPicture()), "rgby") << c.name;
        EXPECT_EQ(m_picture.LoadWithSystemReader(At(c.name)), "") << c.name;
        EXPECT_EQ(Quarters(m_picture.SystemPicture()), "rgby") << c.name;
    }
    EXPECT_EQ(Load("a.gif", kGif), "");
    EXPECT_EQ(m_picture.SystemPicture().pixel(0, 0), qRgb(255, 0, 0));
    EXPECT_EQ(m_picture.SystemPicture().pixel(1, 0), qRgb(0, 0, 255));
}

TEST_F(Loading, ReadsGreyAndFourInksWhicheverWayTheyAreKept) {
    const QImage picture = TellTale(64, 48);
    for (const JpegKind kind : {JpegKind::Cmyk, JpegKind::AdobeCmyk})
        for (const QSize wanted : {QSize(), QSize(8, 8)}) {
            EXPECT_EQ(Load("cmyk.jpg", JpegBytes(picture, kind), wanted), "");
            EXPECT_EQ(Quarters(m_picture.SystemPicture()), "rgby");
        }
    EXPECT_EQ(Load("grey.jpg", JpegBytes(picture, JpegKind::Gray)), "");
    const QRgb pixel = m_picture.SystemPicture().pixel(5, 5);
    EXPECT_NEAR(qRed(pixel), qGray(255, 0, 0), 2);
    EXPECT_EQ(qRed(pixel), qBlue(pixel));
    EXPECT_EQ(qAlpha(pixel), 255);
}

TEST_F(Loading, ReadersDoNotTurnByThemselves) {
    std::string bytes = JpegBytes(TellTale(64, 48));
    // Orientation 6 in a camera block behind the first marker.
    const std::string exif("\xFF\xE1\0\x22"
                           "Exif\0\0MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0",
                           36);
    bytes.insert(2, exif);
    EXPECT_EQ(Load("turned.jpg", bytes), "");
    EXPECT_EQ(Quarters(m_picture.SystemPicture()), "rgby");
    EXPECT_EQ(m_picture.LoadWithSystemReader(At("turned.jpg")), "");
    EXPECT_EQ(Quarters(m_picture.SystemPicture()), "rgby");
}

TEST_F(Loading, SaysWhyAFileCannotBeRead) {
    EXPECT_EQ(m_picture.LoadFile(At("missing.jpg"), {}), "No such file or directory");
    EXPECT_EQ(Load("empty.jpg", ""), "The file is empty");
    EXPECT_EQ(Load("text.jpg", "not a picture at all, only words"),
              "Not a picture that can be read");
    EXPECT_EQ(Load("bare.jpg", "\xFF\xD8\xFF"), "Premature end of JPEG file");
    std::filesystem::create_directory(At("folder.jpg"));
    EXPECT_EQ(m_picture.LoadFile(At("folder.jpg"), {}), "Not a file but a folder");
    ASSERT_EQ(mkfifo(At("pipe.jpg").c_str(), 0600), 0);
    EXPECT_EQ(m_picture.LoadFile(At("pipe.jpg"), {}), "Not a file but a pipe");
    EXPECT_EQ(m_picture.StatusText(), "No Image");
    for (const char* name : {"missing.jpg", "empty.jpg", "text.jpg", "bare.jpg", "pipe.jpg"}) {
        EXPECT_EQ(ImgX::ReadFileInfo(At(name)), QSize(0, 0)) << name;
        EXPECT_NE(m_picture.LoadWithSystemReader(At(name)), "") << name;
    }
}

TEST_F(Loading, RefusesWhatDoesNotFitIntoMemoryByItsHeader) {
    EXPECT_NE(Load("huge.jpg", PngHead(400000, 300000)).find("400000 x 300000"), std::string::npos);
    EXPECT_FALSE(m_picture.HasImage());
    EXPECT_EQ(ImgX::ReadFileInfo(At("huge.jpg")), QSize(400000, 300000));
    std::string jpeg = JpegBytes(TellTale(64, 48));
    const auto frame = jpeg.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    jpeg.replace(frame + 5, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_NE(Load("huge2.jpg", jpeg), "");
    EXPECT_FALSE(m_picture.HasImage());
}

TEST_F(Loading, ReadsPicturesAboveTheToolkitsOwnLimit) {
    QImage large(7000, 6000,
                 QImage::Format_Mono); // 168 MB with 32 bits, 5 MB as it is
    large.fill(1);
    ASSERT_GT(PictureMemoryLimit(), 7000LL * 6000 * 4);
    EXPECT_EQ(Load("large.png", PictureBytes(large.convertToFormat(QImage::Format_RGB32), "PNG")),
              "");
    EXPECT_EQ(m_picture.Width(), 7000);
}

TEST_F(Loading, FilesCutShortGiveWhatThereIsAndSaySo) {
    for (const bool progressive : {false, true}) {
        const std::string whole = JpegBytes(TellTale(96, 64), JpegKind::Color, 90, progressive);
        const std::size_t body = whole.find("\xFF\xDA") + 20;
        for (std::size_t length = 0; length < whole.size(); length += 7)
            for (const QSize wanted : {QSize(), QSize(20, 20)}) {
                EXPECT_NE(Load("cut.jpg", whole.substr(0, length), wanted), "") << length;
                EXPECT_TRUE(m_picture.HasImage() || length <= body) << length;
            }
        EXPECT_EQ(Load("cut.jpg", whole.substr(0, whole.size() - 40)),
                  "Premature end of JPEG file");
        EXPECT_EQ(Quarters(m_picture.SystemPicture()).substr(0, 2), "rg")
            << "the upper half is there";
    }
}

TEST_F(Loading, OtherFormatsCutShortAreRefusedOrShownAndNeverCrash) {
    for (const char* format : {"PNG", "BMP", "TIFF", "WEBP"}) {
        const std::string whole = PictureBytes(TellTale(96, 64), format);
        for (std::size_t length = 0; length < whole.size(); length += 1 + whole.size() / 30) {
            const std::string error = Load("cut", whole.substr(0, length));
            if (error.empty()) {
                EXPECT_TRUE(m_picture.HasImage()) << format << ' ' << length;
                EXPECT_GT(length, whole.size() - 12) << format << ' ' << length;
            }
        }
    }
}

TEST_F(Loading, DamagedBytesNeverCrash) {
    const std::string whole = JpegBytes(TellTale(96, 64));
    for (std::size_t at = 2; at < whole.size(); at += 3) {
        std::string damaged = whole;
        damaged[at] = char(damaged[at] ^ 0xFF);
        Load("damaged.jpg", damaged, {20, 20});
        EXPECT_EQ(m_picture.HasImage(), m_picture.Width() > 0) << at;
    }
}

// A card that failed in the middle leaves zeros: the picture is shown, and the loss told.
TEST_F(Loading, TellsOfDamageInTheMiddle) {
    std::string bytes = JpegBytes(TellTale(640, 400));
    const auto middle = static_cast<std::ptrdiff_t>(bytes.size() / 2);
    std::fill(bytes.begin() + middle, bytes.end() - 2, char(0));
    EXPECT_NE(Load("zeros.jpg", bytes), "");
    EXPECT_TRUE(m_picture.HasImage());
    EXPECT_EQ(Load("whole.jpg", JpegBytes(TellTale(640, 400))), "");
}

// The frame of a JPEG file says so many pixels.
std::string Claiming(std::string jpeg, int width, int height) {
    const auto frame = std::min(jpeg.find("\xFF\xC0"), jpeg.find("\xFF\xC2"));
    const std::string size = BigEndian(std::uint32_t(height << 16 | width));
    return frame == std::string::npos ? "" : jpeg.replace(frame + 5, 4, size);
}

// A few hundred bytes that say that they are a picture of a thousand megapixels.
TEST_F(Loading, HugeClaimsOfSmallFilesAreToldAtOnce) {
    for (const bool progressive : {false, true}) {
        const std::string bytes =
            Claiming(JpegBytes(TellTale(64, 48), JpegKind::Color, 90, progressive), 49157, 27397);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(Load("bomb.jpg", bytes),
                  "The file is too small for the 49157 x 27397 pixels that it claims");
        EXPECT_NE(Load("bomb.jpg", bytes, QSize(800, 600)), "");
        EXPECT_FALSE(m_picture.HasImage());
        EXPECT_EQ(ImgX::ReadFileInfo(At("bomb.jpg")), QSize(49157, 27397));
        const auto passed = std::chrono::steady_clock::now() - begin;
        EXPECT_LT(passed, std::chrono::seconds(2)) << "with every check of a debug build";
    }
}

TEST_F(Loading, OfAHugeClaimThePartThatIsThereComesReduced) {
    const std::string bytes = Claiming(JpegBytes(TellTale(8192, 32)), 8192, 65500);
    EXPECT_EQ(Load("strip.jpg", bytes, QSize(800, 6000)),
              "Corrupt JPEG data: premature end of data segment");
    ASSERT_TRUE(m_picture.HasImage());
    EXPECT_EQ(m_picture.SystemPicture().size(), QSize(1024, 8188));
    EXPECT_EQ(m_picture.SystemPicture().pixelColor(100, 0), QColor(254, 0, 0));
    EXPECT_EQ(m_picture.FullPicture().size(), QSize(1024, 8188)) << "no more is made up";
    EXPECT_EQ(m_picture.Height(), 8188);
}

TEST_F(Loading, ADecodeThatIsNotWantedAnyMoreIsBrokenOff) {
    for (const bool progressive : {false, true}) {
        std::string error;
        const auto source = PictureLoader::Open(
            m_folder.Write("a.jpg",
                           JpegBytes(TellTale(640, 480), JpegKind::Color, 90, progressive)),
            error);
        ASSERT_TRUE(source) << error;
        std::atomic<bool> stop = true;
        {
            const HeedsStop heeds(stop);
            EXPECT_TRUE(source->Decode({}, error).isNull());
            EXPECT_EQ(error, "The reading was broken off");
        }
        EXPECT_EQ(Quarters(source->Decode({}, error)), "rgby");
    }
}
