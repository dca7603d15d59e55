// How large a pixel is on the sky, by headers of many programs.
#include "sky/series/FrameScale.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

TEST(FrameScale, IsByThePlateThenByItsProgramThenByFocalLength) {
    const std::string focal = "FOCALLEN=               1000.0 / mm";
    const std::string size = "XPIXSZ  =                 4.85 / microns, binned";
    const std::string written = "PIXSCALE=                  2.5";
    const std::vector<std::string> plate{
        "CD1_1   =              0.0E+00", "CD1_2   =             -0.00025",
        "CD2_1   =              0.00025", "CD2_2   =                    0"};
    EXPECT_NEAR(ScaleOf({focal, size}).value_or(0), 1.0004, 1e-4);
    EXPECT_NEAR(ScaleOf({focal, size, written}).value_or(0), 2.5, 1e-9);
    std::vector<std::string> all = plate;
    all.push_back(written);
    EXPECT_NEAR(ScaleOf(all).value_or(0), 0.9, 1e-9);
    EXPECT_NEAR(
        ScaleOf({"CDELT1  =              -0.0005", "CDELT2  =               0.0005"}).value_or(0),
        1.8, 1e-9);
    EXPECT_NEAR(ScaleOf({"SECPIX  = '1.21    '"}).value_or(0), 1.21, 1e-9);
}

TEST(FrameScale, IsNoneWhereItCannotBe) {
    EXPECT_EQ(ScaleOf({}), std::nullopt);
    EXPECT_EQ(ScaleOf({"XPIXSZ  =                 4.85"}), std::nullopt); // of which telescope?
    EXPECT_EQ(ScaleOf({"PIXSCALE=                    0", "COMMENT PIXSCALE= 5"}), std::nullopt);
    EXPECT_EQ(ScaleOf({"PIXSCALE= 'no number'"}), std::nullopt);
    EXPECT_EQ(ScaleOf({"FOCALLEN=                 0.01", "XPIXSZ  =                 4.85"}),
              std::nullopt);
}

} // namespace
} // namespace tarn::testing
