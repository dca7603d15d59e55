// One picture made small: which size, which way up, and how far from a full decode.
#include "PictureFiles.h"
#include "support/ExifBuilder.h"
#include "support/TestFolder.h"

#include "imaging/ImgX.h"
#include "imaging/JpegWriter.h"
#include "thumbnails/ScalePicture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

namespace tarn::testing {
namespace {

QImage Thumbnail(const std::string& path, int width, std::string* error = nullptr) {
    std::string why;
    const std::string bytes = ThumbnailJpeg(path, width, 90, why);
    if (error) *error = why;
    return QImage::fromData(QByteArray::fromStdString(bytes), "JPEG");
}

// Detail of every size, so that a coarse reading would show.
QImage Detailed(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const double wave =
                std::sin(x * 0.02) * std::cos(y * 0.03) + 0.5 * std::sin(double(x) * y * 0.0005);
            const int level = std::clamp(int(128 + 60 * wave) + (x * 7 + y * 13) % 17, 0, 255);
            picture.setPixel(x, y, qRgb(level, 255 - level, (level * 2) % 256));
        }
    return picture;
}

TEST(ScalePicture, WidthIsTheSizeWhateverThePicture) {
    const TestFolder folder;
    const std::string wide = folder.Write("w.jpg", JpegBytes(TellTale(600, 400)));
    const std::string high = folder.Write("h.tif", PictureBytes(TellTale(400, 600), "BMP"));
    const std::string small = folder.Write("s.jpg", JpegBytes(TellTale(30, 20)));
    const std::string flat = folder.Write("f.jpg", JpegBytes(TellTale(3000, 4)));
    EXPECT_EQ(Thumbnail(wide, 120).size(), QSize(120, 80));
    EXPECT_EQ(Thumbnail(high, 200).size(), QSize(200, 300));
    EXPECT_EQ(Thumbnail(small, 120).size(), QSize(120, 80));
    EXPECT_EQ(Thumbnail(flat, 120).size(), QSize(120, 1));
    EXPECT_EQ(Quarters(Thumbnail(high, 200)), "rgby");
}

TEST(ScalePicture, StandsUprightAndIsAsWideThen) {
    const TestFolder folder;
    const QImage stored = TellTale(60, 40); // red, green / blue, yellow
    const char* const upright[] = {"rgby", "gryb", "ybgr", "byrg", "rbgy", "bryg", "ygbr", "gyrb"};
    for (int orientation = 1; orientation <= 8; ++orientation) {
        ExifBuilder data(Endian::Big);
        data.Short(274, unsigned(orientation));
        const std::string head = data.Jpeg();
        const std::string path =
            folder.Write("o.jpg", head.substr(0, head.size() - 2) + JpegBytes(stored).substr(2));
        const QImage thumbnail = Thumbnail(path, 120);
        EXPECT_EQ(Quarters(thumbnail), upright[orientation - 1]) << orientation;
        EXPECT_EQ(thumbnail.size(), orientation < 5 ? QSize(120, 80) : QSize(120, 180));
    }
}

TEST(ScalePicture, LooksLikeAFullDecodeScaledOnce) {
    const TestFolder folder;
    const QImage picture = Detailed(2400, 1600);
    const std::string path = folder.Write("p.jpg", JpegBytes(picture));
    ImgX full;
    ASSERT_EQ(full.LoadFile(path, {}), "");
    for (const int width : {64, 200, 299, 301, 900}) {
        const QImage once = full.FullPicture().scaled(
            ThumbnailSize(picture.size(), width), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const QImage small =
            ScalePicture(path, [width](QSize size) { return ThumbnailSize(size, width); }).pixels;
        ASSERT_EQ(small.size(), once.size());
        double sum = 0;
        for (int y = 0; y < once.height(); ++y)
            for (int x = 0; x < once.width(); ++x)
                sum += std::abs(qGreen(once.pixel(x, y)) - qGreen(small.pixel(x, y)));
        // Levels of 255 on average; the most where the reading is only just large enough.
        EXPECT_LT(sum / (once.width() * once.height()), 3.0) << width;
    }
}

TEST(ScalePicture, SaysWhyThereIsNone) {
    const TestFolder folder;
    std::string error;
    EXPECT_TRUE(Thumbnail(folder.Write("e.jpg", ""), 120, &error).isNull());
    EXPECT_EQ(error, "The file is empty");
    EXPECT_TRUE(Thumbnail(folder.Write("n.jpg", "no picture"), 120, &error).isNull());
    EXPECT_NE(error, "");
    EXPECT_TRUE(
        Thumbnail(folder.Write("h.jpg", JpegBytes(TellTale(1, 30000))), 120, &error).isNull());
    EXPECT_EQ(error, "Too high for a thumbnail");
    const std::string whole = JpegBytes(TellTale(600, 400));
    const std::string part = folder.Write("c.jpg", whole.substr(0, whole.size() / 2));
    EXPECT_EQ(Thumbnail(part, 120, &error).size(), QSize(120, 80)); // what can be seen of it
}

} // namespace
} // namespace tarn::testing
