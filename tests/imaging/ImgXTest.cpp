#include "PictureFiles.h"
#include "support/TestFolder.h"

#include "imaging/ImgX.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>

using namespace tarn;
using namespace tarn::testing;

namespace {

constexpr QSize kBox(80, 50);

QSize SizeOf(const ImgX& picture) {
    return {picture.Width(), picture.Height()};
}

// A sharp edge in another place of each colour, so that two readings can be
// compared.
double MeanDifference(const QImage& one, const QImage& other) {
    if (one.size() != other.size()) return 255;
    double sum = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
                   std::abs(qBlue(a) - qBlue(b));
        }
    return sum / (3.0 * one.width() * one.height());
}

class TurnedPictures : public ::testing::Test {
protected:
    ImgX Loaded(int width, int height, QSize wanted) {
        ImgX picture;
        m_path = m_folder.Write("a.jpg", JpegBytes(TellTale(width, height)));
        EXPECT_EQ(picture.LoadFile(m_path, wanted), "");
        return picture;
    }

    TestFolder m_folder;
    std::string m_path;
};

} // namespace

TEST_F(TurnedPictures, AnEmptyObjectSaysNoImageAndStandsEveryOperation) {
    ImgX picture;
    picture.Scale(10, 10);
    picture.Crop(0, 0, 5, 5);
    picture.Rotate(90);
    picture.Mirror(0);
    picture.Brightness(50);
    EXPECT_EQ(picture.StatusText(), "No Image");
    EXPECT_EQ(SizeOf(picture), QSize(0, 0));
    EXPECT_TRUE(picture.FullPicture().isNull());
}

TEST_F(TurnedPictures, AReducedPictureKnowsItsRealSizeAndHasEnoughPixels) {
    struct Case {
        QSize file, box, least;
    };
    // Fitted upright to 80 x 20; on its side to 80 from 160; whole; upright to 200 x 100.
    for (const Case& c :
         {Case{{640, 160}, kBox, {80, 20}}, Case{{400, 800}, {320, 80}, {80, 160}},
          Case{{40, 30}, kBox, {40, 30}}, Case{{800, 400}, {240, 100}, {200, 100}}}) {
        ImgX picture = Loaded(c.file.width(), c.file.height(), c.box);
        const QSize held = picture.SystemPicture().size();
        EXPECT_EQ(SizeOf(picture), c.file);
        EXPECT_EQ(held.expandedTo(c.least), held) << c.file.width();
        EXPECT_LE(held.width(), c.least.width() + c.file.width() / 8 + 1) << "more than was needed";
        EXPECT_EQ(picture.FullPicture().size(), c.file);
        EXPECT_EQ(Quarters(picture.FullPicture()), "rgby");
    }
}

TEST_F(TurnedPictures, ScalesFromTheReducedPictureAndFetchesMoreOnlyWhenThatIsTooSmall) {
    ImgX small = Loaded(640, 400, kBox);
    ImgX large = small;
    std::filesystem::remove(m_path);
    small.Scale(80, 50);
    EXPECT_EQ(small.SystemPicture().size(), kBox);
    EXPECT_EQ(small.ErrorText(), "") << "no second reading";
    large.Scale(320, 200);
    EXPECT_EQ(large.SystemPicture().size(), QSize(320, 200));
    EXPECT_EQ(large.ErrorText(), "No such file or directory");
    EXPECT_EQ(Quarters(large.SystemPicture()), "rgby") << "enlarged from what was at hand";
}

TEST_F(TurnedPictures, APictureThatWasReplacedKeepsShowingTheOldOne) {
    ImgX picture = Loaded(640, 400, kBox);
    m_folder.Write("a.jpg", JpegBytes(TellTale(300, 300)));
    EXPECT_EQ(picture.FullPicture().size(), QSize(640, 400));
    EXPECT_EQ(picture.ErrorText(), "The file has changed");
    ImgX same = Loaded(640, 400, kBox);
    m_folder.Write("a.jpg",
                   JpegBytes(TellTale(640, 400).mirrored(true, false), JpegKind::Color, 60));
    EXPECT_EQ(Quarters(same.FullPicture()), "rgby"); // not the other picture of this size
    EXPECT_EQ(same.ErrorText(), "The file has changed");
    ImgX dated = Loaded(640, 400, kBox);
    SetFileTime(m_path, 2004, 6, 22, 20, 15, 30); // as the program does itself
    EXPECT_EQ(dated.FullPicture().size(), QSize(640, 400));
    EXPECT_EQ(dated.ErrorText(), "");
}

TEST_F(TurnedPictures, CopiesReadTheFileOnceBetweenThem) {
    ImgX first = Loaded(640, 400, kBox);
    ImgX second;
    second.CopyFrom(first);
    const QImage full = first.FullPicture();
    std::filesystem::remove(m_path);
    EXPECT_EQ(second.FullPicture(), full);
    EXPECT_EQ(second.ErrorText(), "");
}

TEST_F(TurnedPictures, TurnsAreReplayedOnTheFullPicture) {
    const std::vector<std::function<void(ImgX&)>> steps{
        [](ImgX& p) { p.Rotate(90); },  [](ImgX& p) { p.Rotate(180); },
        [](ImgX& p) { p.Rotate(270); }, [](ImgX& p) { p.Mirror(0); },
        [](ImgX& p) { p.Mirror(1); },   [](ImgX& p) { p.Brightness(-20); }};
    for (std::size_t i = 0; i < steps.size(); ++i)
        for (std::size_t j = 0; j < steps.size(); ++j) {
            ImgX late = Loaded(160, 96, {20, 20});
            ImgX early = Loaded(160, 96, {});
            ASSERT_NE(late.SystemPicture().size(), early.SystemPicture().size());
            for (const std::size_t step : {i, j}) {
                steps[step](late);
                steps[step](early);
            }
            EXPECT_EQ(late.FullPicture(), early.FullPicture()) << i << j;
        }
}

TEST_F(TurnedPictures, ReducedAndFullReadingsShowTheSamePicture) {
    ImgX reduced = Loaded(640, 400, kBox);
    ImgX full = Loaded(640, 400, {});
    reduced.Scale(80, 50);
    full.Scale(80, 50);
    EXPECT_LT(MeanDifference(reduced.SystemPicture(), full.SystemPicture()), 3);
}

TEST_F(TurnedPictures, CropsAtFullSizeAndLeavesAwayWhatIsOutside) {
    ImgX inside = Loaded(640, 400, kBox);
    inside.Crop(300, 180, 40, 60);
    EXPECT_EQ(SizeOf(inside), QSize(40, 60));
    EXPECT_EQ(Quarters(inside.SystemPicture()).substr(1), "gby") << "the edge lies at 10, 10";
    ImgX over = Loaded(640, 400, kBox);
    over.Crop(-10, 380, 50, 50);
    EXPECT_EQ(SizeOf(over), QSize(40, 20));
    over.Crop(100, 0, 10, 10);
    EXPECT_FALSE(over.HasImage());
}

TEST_F(TurnedPictures, BrightnessAddsAndStopsAtBlackAndWhite) {
    QImage grey(2, 1, QImage::Format_ARGB32);
    grey.setPixel(0, 0, qRgba(10, 100, 240, 255));
    grey.setPixel(1, 0, qRgba(10, 100, 240, 128));
    const auto with = [&](int value) {
        ImgX picture;
        picture.TakePicture(grey);
        picture.Brightness(value);
        return picture.SystemPicture();
    };
    EXPECT_EQ(with(0), grey);
    EXPECT_EQ(with(20).pixel(0, 0), qRgba(61, 151, 255, 255));
    EXPECT_EQ(with(-20).pixel(1, 0), qRgba(0, 49, 189, 128)) << "transparency stays";
    EXPECT_EQ(with(100).pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(with(-100).pixel(0, 0), qRgb(0, 0, 0));
}

TEST_F(TurnedPictures, TakesPicturesOfAnyDepth) {
    ImgX picture;
    picture.TakePicture(TellTale(40, 20).convertToFormat(QImage::Format_Indexed8));
    EXPECT_EQ(picture.StatusText(), "40 x 20, 32 bit");
    EXPECT_EQ(Quarters(picture.SystemPicture()), "rgby");
    picture.Rotate(45);
    EXPECT_EQ(qAlpha(picture.SystemPicture().pixel(0, 0)), 0) << "uncovered corner";
}
