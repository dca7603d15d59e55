#include "display/Fit.h"
#include "imaging/Placeholder.h"

#include <gtest/gtest.h>

using namespace tarn;

namespace {

std::string Fitted(int width, int height, int boxWidth, int boxHeight) {
    const PreviewFit fit = FitPreview(width, height, boxWidth, boxHeight);
    return std::to_string(fit.width) + "x" + std::to_string(fit.height) +
           (fit.reduced ? "" : " as it is");
}

} // namespace

TEST(FitPreview, ReducesToTheBoxAndNeverEnlarges) {
    EXPECT_EQ(Fitted(4000, 3000, 800, 500), "667x500");
    EXPECT_EQ(Fitted(3000, 2000, 800, 500), "750x500");
    EXPECT_EQ(Fitted(2000, 3000, 800, 500), "333x500");
    EXPECT_EQ(Fitted(4000, 1000, 800, 500), "800x200");
    EXPECT_EQ(Fitted(1600, 1000, 800, 500), "800x500") << "the box's own shape";
    EXPECT_EQ(Fitted(800, 500, 800, 500), "800x500 as it is");
    EXPECT_EQ(Fitted(801, 10, 800, 500), "800x10") << "too large in one direction is enough";
    EXPECT_EQ(Fitted(300, 200, 800, 500), "300x200 as it is");
}

TEST(FitPreview, RoundsHalvesToEvenAndKeepsAtLeastOnePixel) {
    EXPECT_EQ(Fitted(1000, 250, 10, 50), "10x2");
    EXPECT_EQ(Fitted(1000, 250, 14, 50), "14x4");
    EXPECT_EQ(Fitted(65000, 3, 800, 500), "800x1");
    EXPECT_EQ(Fitted(4000, 3000, 0, 0), "4000x3000 as it is") << "no pane yet";
}

TEST(CropPreview, TakesTheMiddleAndAllOfAShortSide) {
    const PreviewCrop middle = CropPreview(4000, 3000, 800, 500);
    EXPECT_FLOAT_EQ(middle.left, 1600);
    EXPECT_FLOAT_EQ(middle.top, 1250);
    EXPECT_EQ(middle.width, 800);
    EXPECT_EQ(middle.height, 500);

    const PreviewCrop doubled = CropPreview(600, 400, 800, 500);
    EXPECT_FLOAT_EQ(doubled.left + doubled.top, 0);
    EXPECT_EQ(doubled.width, 600);
    EXPECT_EQ(doubled.height, 400);

    const PreviewCrop wide = CropPreview(1001, 200, 800, 500);
    EXPECT_FLOAT_EQ(wide.left, 100.5F) << "not rounded yet";
    EXPECT_EQ(wide.width, 800);
    EXPECT_EQ(wide.height, 200);
}

TEST(Placeholders, GoByTheFourLastCharacters) {
    for (const auto& [type, picture] : {std::pair{"FITS", "FITS_image.jpg"},
                                        {".FIT", "FITS_image.jpg"},
                                        {".CR2", "Canon_raw.jpg"},
                                        {".MP4", "MP4.jpg"},
                                        {".JPG", "No_image.jpg"}})
        EXPECT_EQ(PlaceholderFor(type).picture, picture);
}
