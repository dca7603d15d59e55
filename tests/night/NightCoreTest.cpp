// Which frames stand out, in what order they are listed, and what is said of them.
#include "night/Corners.h"
#include "night/NightChoice.h"
#include "night/NightFrames.h"
#include "night/NightWords.h"

#include "sky/judging/Judging.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarn {
namespace {

const NightColumn& Column(const char* name) {
    return NightColumns()[NightColumnNamed(name)];
}

NightFrame Frame(const std::string& name, double hfr, int group = 0) {
    NightFrame frame;
    frame.name = name;
    frame.isMeasured = true;
    frame.measures.width = 100;
    frame.measures.hfr = hfr;
    frame.measures.background = 100;
    frame.group = group;
    return frame;
}

std::vector<NightFrame> Night(const std::vector<double>& sizes, int group = 0) {
    std::vector<NightFrame> frames;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        frames.push_back(Frame("f" + std::to_string(i), sizes[i], group));
        frames.back().order = int(i);
    }
    return frames;
}

TEST(NightChoices, ATenthOfEachSeriesByItself) {
    std::vector<double> sharp(20, 2.0);
    for (std::size_t i = 0; i < sharp.size(); ++i) sharp[i] += 0.01 * double(i);
    std::vector<NightFrame> frames = Night(sharp);
    // Another filter with larger stars throughout: only its own worst counts.
    for (int i = 0; i < 6; ++i) frames.push_back(Frame("ha", 5 - 0.1 * i, 1));
    frames.push_back(Frame("dark", kNotMeasured, -1));
    EXPECT_EQ(WorstTenth(frames, Column("hfr")), (FrameIndices{18, 19, 20}));
    EXPECT_EQ(BestTenth(frames, Column("hfr")), (FrameIndices{0, 1, 25}));
    for (std::size_t i = 0; i < frames.size(); ++i) frames[i].score = double(i);
    frames.back().score = kNotMeasured;
    EXPECT_EQ(WorstTenth(frames, Column("score")), (FrameIndices{0, 1, 20})); // less is worse
    // Too few for a tenth.
    EXPECT_EQ(WorstTenth(Night({1, 2, 3, 4}), Column("hfr")), FrameIndices());
}

TEST(NightChoices, SigmasAreRobustAndOfTheWorseSide) {
    std::vector<double> sizes;
    for (int i = 0; i < 30; ++i) sizes.push_back(2 + 0.02 * (i % 5)); // a deviation of 0.03
    sizes[4] = 2.4;
    sizes[9] = 9;    // does not hide the one before
    sizes[12] = 1.1; // better is no fault
    EXPECT_EQ(OutsideSigma(Night(sizes), Column("hfr"), 3), (FrameIndices{4, 9}));
    EXPECT_EQ(OutsideSigma(Night(std::vector<double>(9, 2.0)), Column("hfr"), 3), FrameIndices());
}

TEST(NightChoices, ALineTakesWhatIsWorse) {
    std::vector<NightFrame> frames = Night({2, 3, 4, kNotMeasured});
    frames.push_back(Frame("flat", 9, -1)); // not judged
    EXPECT_EQ(WorseThan(frames, Column("hfr"), 2.5), (FrameIndices{1, 2}));
    for (std::size_t i = 0; i < 3; ++i) frames[i].transparency = 1 - 0.3 * double(i);
    EXPECT_EQ(WorseThan(frames, Column("transparency"), 0.5), (FrameIndices{2}));
}

TEST(NightChoices, TooFewStarsAreToldFromDarksAndFromLandscapes) {
    std::vector<NightFrame> frames = Night({2, 2, 2});
    const char* faults[] = {"", "no stars", "fewer than 5 stars", "a dark frame", "no stars"};
    frames.resize(5);
    for (std::size_t i = 0; i < frames.size(); ++i) {
        frames[i].isMeasured = true;
        frames[i].group = i == 0 ? 0 : -1;
        frames[i].measures.fault = faults[i];
    }
    frames[4].look = "as dark as a dark frame";
    EXPECT_EQ(WithoutStars(frames), (FrameIndices{1, 2}));
    frames[0].group = -1; // no night at all
    EXPECT_EQ(WithoutStars(frames), FrameIndices());
}

TEST(NightChoices, TheBestBesideIsAnotherOfTheSameSeries) {
    std::vector<NightFrame> frames = Night({2, 2, 2});
    frames.push_back(Frame("ha", 1, 1));
    frames.push_back(Frame("dark", kNotMeasured, -1));
    const double scores[] = {50, 90, 70, 100, kNotMeasured};
    for (std::size_t i = 0; i < frames.size(); ++i) frames[i].score = scores[i];
    EXPECT_EQ(BestBeside(frames, 0), 1U);
    EXPECT_EQ(BestBeside(frames, 1), 2U); // not itself
    EXPECT_EQ(BestBeside(frames, 3), std::nullopt);
    EXPECT_EQ(BestBeside(frames, 4), std::nullopt);
}

TEST(Bursts, GoOnWhileEachFollowsWithinTwoSeconds) {
    std::vector<NightFrame> frames = Night(std::vector<double>(8, kNotMeasured), -1);
    // Out of order; 100 to 104 is one burst though its ends lie apart.
    const std::int64_t times[] = {104, 100, 102, 200, 300, 302, 0, 305};
    const double sharpness[] = {0.2, 0.1, 0.3, 0.9, kNotMeasured, kNotMeasured, 1, 1};
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (i != 6) frames[i].taken = times[i];
        frames[i].measures.sharpness = sharpness[i];
    }
    EXPECT_EQ(BurstsOf(frames), (std::vector<FrameIndices>{{1, 2, 0}, {4, 5}}));
    EXPECT_EQ(SharpestOfBursts(frames), (FrameIndices{2})); // the other tells no sharpness
}

// Sharpness of a raw file says nothing beside that of a JPEG.
TEST(Bursts, RawAndJpegOfAShotAreOnePicture) {
    std::vector<NightFrame> frames = Night(std::vector<double>(6, kNotMeasured), -1);
    const char* names[] = {"a.CR2", "a.jpg", "b.cr2", "b.JPG", "c.jpg", "c.xcf"};
    const std::int64_t times[] = {100, 100, 101, 101, 200, 200};
    const double sharpness[] = {9, 0.3, 8, 0.4, 1, 1};
    for (std::size_t i = 0; i < frames.size(); ++i) {
        frames[i].name = names[i];
        frames[i].taken = times[i];
        frames[i].measures.sharpness = sharpness[i];
    }
    EXPECT_EQ(BurstsOf(frames), (std::vector<FrameIndices>{{0, 1, 2, 3}})); // c is one shot
    frames[2].measures.sharpness = kNotMeasured;
    EXPECT_EQ(SharpestOfBursts(frames), (FrameIndices{2, 3}));
}

TEST(NightFrames, AreSortedByNumbersAndTextsWithTheUnknownLast) {
    std::vector<NightFrame> frames = Night({3, kNotMeasured, 1, 3});
    frames[0].filter = "Ha";
    frames[2].filter = "B";
    frames[3].filter = "ha";
    EXPECT_EQ(SortedBy(frames, Column("hfr"), false), (FrameIndices{2, 0, 3, 1}));
    EXPECT_EQ(SortedBy(frames, Column("hfr"), true), (FrameIndices{0, 3, 2, 1}));
    EXPECT_EQ(SortedBy(frames, Column("filter"), false), (FrameIndices{2, 0, 3, 1}));
    frames[1].mark = {Decision::Keep, 0};
    frames[2].mark = {Decision::Reject, 0};
    frames[3].mark = {Decision::None, 3};
    EXPECT_EQ(SortedBy(frames, Column("mark"), false), (FrameIndices{1, 3, 0, 2}));
}

TEST(NightFrames, SayWhatTheyAreAndWhyTheyAreLeftOut) {
    NightFrame frame = Frame("a.fits", 2.345);
    frame.measures.series = "Ha\n3.000E+02\n100 x 50";
    frame.taken = 1730836800;
    TakeSeries(frame);
    EXPECT_EQ(CellText(frame, Column("filter")), "Ha");
    EXPECT_EQ(CellText(frame, Column("exposure")), "300 s");
    EXPECT_EQ(CellText(frame, Column("time")), "11-05 20:00:00");
    EXPECT_EQ(CellText(frame, Column("hfr")), "2.35");
    EXPECT_EQ(CellText(frame, Column("fwhm")), "");
    std::vector<NightFrame> frames{frame, Frame("d", kNotMeasured, -1),
                                   Frame("e", kNotMeasured, -1), NightFrame()};
    frames[1].measures.fault = "no stars";
    frames[1].look = "as dark as a dark frame";
    frames[2].measures.width = 0;
    frames[2].measures.fault = "No such file or directory";
    EXPECT_EQ(SummaryOf(frames),
              "2 of 4 measured; not judged: 1 \u00D7 no stars, as dark as a dark frame; "
              "could not be measured: 1 \u00D7 No such file or directory");
    EXPECT_EQ(SummaryOf({}), "");
}

TEST(Judging, SeriesAreJudgedApartAndRestIsLookedAt) {
    std::vector<FrameMeasures> frames(9);
    for (std::size_t i = 0; i < 8; ++i) {
        frames[i].series = i < 4 ? "L" : "Ha";
        frames[i].hfr = i < 4 ? 2 + 0.1 * double(i) : 4 + 0.1 * double(i);
        frames[i].stars = 50;
        frames[i].eccentricity = 0.3;
        frames[i].noise = 10;
        frames[i].background = 1000;
    }
    frames[8].background = 200; // no stars, and no sky either
    frames[3].hfr = kNotMeasured;
    frames[3].stars = 0;
    frames[3].background = 20000;
    const JudgedFrames judged = JudgeFrames(frames);
    EXPECT_EQ(judged.groups, (std::vector<int>{0, 0, 0, -1, 1, 1, 1, 1, -1}));
    EXPECT_NEAR(judged.scores[0], 100, 1);
    EXPECT_NEAR(judged.scores[4], 100, 1); // the best of its own
    EXPECT_LT(judged.scores[7], judged.scores[5]);
    EXPECT_TRUE(std::isnan(judged.scores[3]));
    EXPECT_EQ(judged.looks[3], "as bright as a flat frame");
    EXPECT_EQ(judged.looks[8], "as dark as a dark frame");
    EXPECT_EQ(judged.looks[0], "");
}

TEST(Corners, TellSizeAndDirectionOfEachNinth) {
    std::vector<MeasuredStar> stars;
    const auto add = [&](double x, double y, double hfr, double eccentricity, double angle) {
        MeasuredStar star;
        star.x = x;
        star.y = y;
        star.hfr = hfr;
        star.eccentricity = eccentricity;
        star.angle = angle;
        stars.push_back(star);
    };
    for (const double hfr : {2.0, 2.2, 9.0}) add(10, 10, hfr, 0.6, 89);
    for (const double angle : {-88.0, 88.0, 90.0}) add(290, 10, 3, 0.6, angle); // one direction
    for (const double angle : {0.0, 60.0, -60.0}) add(150, 150, 2, 0.6, angle); // none
    add(10, 290, 2, 0.6, 0);
    const auto corners = CornersOf(stars, 300, 300);
    EXPECT_DOUBLE_EQ(corners[0].hfr, 2.2);
    EXPECT_NEAR(corners[0].angle, 89, 0.1);
    EXPECT_NEAR(corners[2].elongation, 0.6, 0.01);
    EXPECT_NEAR(std::abs(corners[2].angle), 90, 1);
    EXPECT_NEAR(corners[4].elongation, 0, 0.01);
    EXPECT_TRUE(std::isnan(corners[6].hfr)); // one star says nothing
    EXPECT_EQ(corners[6].stars, 1);
    EXPECT_EQ(corners[8].stars, 0);
}

} // namespace
} // namespace tarn
