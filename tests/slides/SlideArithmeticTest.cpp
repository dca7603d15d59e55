#include "slides/SlideArithmetic.h"
#include "slides/SlideTitle.h"

#include <gtest/gtest.h>

#include <ostream>

namespace tarn {

void PrintTo(const SlideSize& s, std::ostream* out) {
    *out << s.width << "x" << s.height;
}
void PrintTo(const SlidePlace& p, std::ostream* out) {
    *out << p.left << "," << p.top;
}
void PrintTo(const SlideStrip& s, std::ostream* out) {
    *out << s.left << "," << s.top << " " << s.width;
}

namespace {

const SlideScreen kScreen = SlideScreenOf(1032, 776, 1); // leaves 1024 x 768
const SlideScreen kFine = SlideScreenOf(2064, 1552, 2);  // the same with finer pixels

TEST(SlideArithmetic, OnePictureIsShrunkToTheScreenAndNeverEnlarged) {
    const auto fit = [](int w, int h) { return FitSlide(w, h, SlideLayout::One, kScreen); };
    EXPECT_EQ(fit(1000, 800), (SlideSize{935, 748}));
    EXPECT_EQ(fit(800, 1000), (SlideSize{598, 748}));
    EXPECT_EQ(fit(4000, 2000), (SlideSize{1024, 512}));
    EXPECT_EQ(fit(1024, 748), (SlideSize{1024, 748}));
    EXPECT_EQ(fit(100, 100), (SlideSize{100, 100}));
    EXPECT_EQ(fit(9000, 1), (SlideSize{1024, 1}));
    EXPECT_EQ(FitSlide(2000, 1600, SlideLayout::One, kFine), (SlideSize{1870, 1496}));
    EXPECT_EQ(PlaceSlide({100, 100}, 0, SlideLayout::One, kScreen), (SlidePlace{466, 328}));
    EXPECT_EQ(PlaceSlide({200, 200}, 0, SlideLayout::One, kFine), (SlidePlace{932, 656}));
    EXPECT_EQ(TitleStrip(748, 0, SlideLayout::One, kScreen), (SlideStrip{0, 756, 1024}));
}

TEST(SlideArithmetic, FourAreasInReadingOrder) {
    const SlideLayout four = SlideLayout::Four;
    const SlideSize whole{512, 364};
    EXPECT_EQ(FitSlide(512, 364, four, kScreen), whole);
    const SlidePlace places[] = {{4, 4}, {534, 4}, {4, 398}, {534, 398}};
    const SlideStrip strips[] = {{0, 374, 520}, {522, 374, 520}, {0, 768, 520}, {522, 768, 520}};
    for (int area = 0; area < 4; ++area) {
        EXPECT_EQ(PlaceSlide(whole, area, four, kScreen), places[area]);
        EXPECT_EQ(TitleStrip(364, area, four, kScreen), strips[area]);
    }
    EXPECT_EQ(FitSlide(600, 800, four, kScreen), (SlideSize{273, 364}));
    EXPECT_EQ(SlideBoxOf(four, kFine), (SlideSize{1024, 728}));
}

TEST(SlideArithmetic, TwoAreasBesideOrAboveEachOther) {
    const SlideLayout beside = SlideLayout::TwoHorizontal; // 502 x 758
    EXPECT_EQ(FitSlide(1000, 1000, beside, kScreen), (SlideSize{502, 502}));
    EXPECT_EQ(PlaceSlide({502, 502}, 0, beside, kScreen), (SlidePlace{4, 122}));
    EXPECT_EQ(PlaceSlide({502, 502}, 1, beside, kScreen), (SlidePlace{524, 122}));
    EXPECT_EQ(TitleStrip(502, 1, beside, kScreen), (SlideStrip{512, 630, 510}));
    const SlideLayout above = SlideLayout::TwoVertical; // 1014 x 374
    EXPECT_EQ(FitSlide(1000, 1000, above, kScreen), (SlideSize{354, 354}));
    EXPECT_EQ(PlaceSlide({354, 354}, 0, above, kScreen), (SlidePlace{334, 4}));
    EXPECT_EQ(PlaceSlide({354, 354}, 1, above, kScreen), (SlidePlace{334, 392}));
    EXPECT_EQ(TitleStrip(354, 1, above, kScreen), (SlideStrip{0, 748, 1022}));
}

TEST(SlideArithmetic, APlaceOfTheScreenLiesInAnArea) {
    struct Case {
        SlideLayout layout;
        int areas[4]; // at the middles of the screen's quarters
    };
    for (const Case& c :
         {Case{SlideLayout::One, {0, 0, 0, 0}}, Case{SlideLayout::TwoHorizontal, {0, 1, 0, 1}},
          Case{SlideLayout::TwoVertical, {0, 0, 1, 1}}, Case{SlideLayout::Four, {0, 1, 2, 3}}})
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(AreaAt(258 + i % 2 * 516, 194 + i / 2 * 388, c.layout, kScreen), c.areas[i])
                << AreasOf(c.layout) << " areas, quarter " << i;
    EXPECT_EQ(AreaAt(1033, 0, SlideLayout::TwoHorizontal, kFine), 1);
    EXPECT_EQ(AreaAt(1032, 0, SlideLayout::TwoHorizontal, kFine), 0);
}

TEST(SlideTitle, PlainFormAndCameraFormWithTheirMarks) {
    PictureInfo info;
    info.PictureDate = "06/22/2004 8:15:30 PM";
    info.ExpCamera = "EOS ";
    info.ExpMegapixels = "6.3 Mp";
    info.ExpFocusShort = ", AF";
    info.ExpSpeed = "400 ISO";
    info.ExpAperture = "f/5.6";
    SlideTitleFacts facts{"a.jpg", "01/02/2003 1:02:03 AM", 0, 3, true, false, {}, 0};
    // Without an exposure time there is no camera form.
    EXPECT_EQ(TitleOf(facts, info), "a.jpg   01/02/2003 1:02:03 AM   (1 of 3)   ");
    info.ExpTime = "1/125s";
    EXPECT_EQ(TitleOf(facts, info), "a.jpg   06/22/2004 8:15:30 PM   EOS 6.3 Mp, AF, 400 ISO, "
                                    "1/125s, f/5.6   (1 of 3)   ");
    facts.camera = false;
    facts.index = 2;
    facts.brightness = -1;
    EXPECT_EQ(TitleOf(facts, info), "a.jpg   01/02/2003 1:02:03 AM   (3 of 3)  Last Picture  -");
    facts.copied = true;
    facts.brightness = 5;
    EXPECT_EQ(TitleOf(facts, info),
              "a.jpg   01/02/2003 1:02:03 AM   (3 of 3)  Last Picture  COPIED  +");
    facts.refusal = "'Copy to' folder has not been set";
    EXPECT_EQ(TitleOf(facts, info), "'Copy to' folder has not been set  +");
}

TEST(SlideTitle, AreasNameTheRowAndHaveNoTotal) {
    EXPECT_EQ(AreaTitle("a.jpg", "today", "EOS, 400 ISO", 4, false),
              "a.jpg  today  EOS, 400 ISO  (5)");
    EXPECT_EQ(AreaTitle("a.jpg", "today", "", 4, true), "a.jpg  today  (5) Last");
    EXPECT_EQ(AreaTitle("a.jpg", "today", "", 4, false, "Kept"), "a.jpg  today  (5)  Kept");
}

TEST(SlideTitle, TheNoteAndInModeTwoTheCameraLines) {
    PictureInfo info;
    info.CameraDataLines[0] = "   File name: a.jpg ";
    info.CameraDataLines[12] = "Camera: EOS";
    info.CameraDataLines[13] = "no line of the panel";
    EXPECT_EQ(TextOnSlide("", info, 1), "");
    EXPECT_EQ(TextOnSlide("x", info, 1), "x\r\n");
    EXPECT_EQ(TextOnSlide("a\r\nb", info, 2), "a\r\nb\r\n\r\nFile name: a.jpg\r\nCamera: EOS");
    EXPECT_EQ(TextOnSlide("", info, 2), "\r\n\r\nFile name: a.jpg\r\nCamera: EOS");
}

} // namespace
} // namespace tarn
