// What a pane shows of a picture that is larger than it.
#include "PictureFiles.h"
#include "support/TestFolder.h"

#include "imaging/PaneCut.h"
#include "imaging/Pixels.h"

#include <gtest/gtest.h>

#include <QTransform>

namespace tarn::testing {
namespace {

// Every pixel another colour.
QImage Colors(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) picture.setPixel(x, y, qRgb(10 * x, 10 * y, 7));
    return picture;
}

// Pixel by pixel.
QImage Plain(const QImage& picture, int times, const SeenPart& part) {
    QImage seen(part.width, part.height, QImage::Format_RGB32);
    for (int y = 0; y < part.height; ++y)
        for (int x = 0; x < part.width; ++x)
            seen.setPixel(x, y, picture.pixel((part.left + x) / times, (part.top + y) / times));
    return seen;
}

TEST(SeenOf, ShowsThePixelsAsTheyAreAtEverySizeAndTurn) {
    const QImage picture = Colors(12, 8);
    const std::pair<int, SeenPart> parts[] = {{1, {0, 0, 12, 8}},
                                              {1, {3, 2, 5, 4}},
                                              {2, {5, 3, 9, 6}},
                                              {4, {17, 9, 7, 11}},
                                              {8, {8 * 11 + 7, 8 * 7 + 7, 1, 1}},
                                              {8, {1, 1, 94, 62}}};
    ImgX whole;
    whole.TakePicture(picture);
    for (const auto& [times, part] : parts)
        EXPECT_EQ(SeenOf(whole, times, part, 0), Plain(picture, times, part)) << times;
    whole.Mirror(0);
    whole.Rotate(90);
    const QImage turned = picture.mirrored(true, false).transformed(QTransform().rotate(90));
    for (const SeenPart& part : {SeenPart{5, 3, 9, 16}, SeenPart{0, 0, 16, 24}})
        EXPECT_EQ(SeenOf(whole, 2, part, 0), Plain(turned, 2, part));
    EXPECT_EQ(SeenOf(whole, 2, {5, 3, 9, 16}, 30), Brightened(Plain(turned, 2, {5, 3, 9, 16}), 30));
}

TEST(SeenMoved, IsWhatWouldHaveBeenMadeAnew) {
    ImgX whole;
    whole.TakePicture(Colors(25, 20));
    whole.Rotate(270);
    const SeenPart was{10, 12, 20, 16};
    for (const auto& [x, y] : {std::pair{0, 0}, {3, 0}, {-3, 5}, {0, -7}, {-10, -12}, {20, 30}}) {
        const SeenPart now{was.left + x, was.top + y, was.width, was.height};
        EXPECT_EQ(SeenMoved(SeenOf(whole, 2, was, 10), was, whole, 2, now, 10),
                  SeenOf(whole, 2, now, 10))
            << x << "," << y;
    }
    const SeenPart larger{10, 12, 24, 16}; // of a window that has grown
    EXPECT_EQ(SeenMoved(SeenOf(whole, 2, was, 0), was, whole, 2, larger, 0),
              SeenOf(whole, 2, larger, 0));
}

TEST(SeenOf, GetsThePixelsOfAReducedPictureThatItNeeds) {
    const TestFolder folder;
    const std::string path = folder.Write("a.jpg", JpegBytes(TellTale(800, 600)));
    ImgX all;
    ASSERT_EQ(all.LoadFile(path, {}), "");
    ImgX reduced;
    ASSERT_EQ(reduced.LoadFile(path, {80, 60}), "");
    const SeenPart part{380, 270, 60, 40};
    EXPECT_EQ(SeenOf(reduced, 1, part, 0), all.FullPicture().copy(380, 270, 60, 40));
    // Of a picture that looks otherwise for a while there are no more pixels: they are enlarged.
    ImgX few;
    few.TakePicture(TellTale(80, 60));
    reduced.TakePixels(few);
    EXPECT_EQ(Quarters(SeenOf(reduced, 1, {0, 0, 800, 600}, 0)), "rgby");
    EXPECT_EQ(PixelsOf(reduced, 2, part).Width(), 30);
}

} // namespace
} // namespace tarn::testing
