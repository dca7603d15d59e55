// Frames of clips by the built program: rows, the best as files, clips that are broken.
#include "MadeDiscs.h"
#include "MadeSer.h"
#include "RunTarn.h"

#include "support/TestFolder.h"
#include "support/Trees.h"

#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

constexpr int kSide = kDiscSide;

struct Clip {
    TestFolder folder;
    TestFolder state;
    SerClip ser{.width = kSide, .height = kSide};

    Clip() { ::setenv("XDG_STATE_HOME", state.Path().c_str(), 1); }
    ~Clip() { ::unsetenv("XDG_STATE_HOME"); }
    Clip(const Clip&) = delete;
    Clip& operator=(const Clip&) = delete;

    std::string Write() const { return folder.Write("mars.ser", SerBytes(ser)); }
};

// Big-endian, 32768 less.
std::vector<int> SamplesOf(const std::string& fits) {
    const std::size_t head = (fits.find("END   ") / 2880 + 1) * 2880;
    std::vector<int> samples;
    for (std::size_t i = 0; i < std::size_t(kSide * kSide); ++i)
        samples.push_back(((int(std::uint8_t(fits[head + 2 * i])) << 8 |
                            int(std::uint8_t(fits[head + 2 * i + 1]))) ^
                           0x8000));
    return samples;
}

TEST(ClipFrames, AreRowsInTheirOrderWithTheirTimes) {
    Clip clip;
    clip.ser.frames = {Disc(32, 30, 3, 255), Disc(31, 33, 1, 255), DarkFrame(),
                       Disc(60, 33, 2, 255)};
    // 2015-03-07 21:12:03 and a quarter of a second more each.
    for (std::int64_t i = 0; i < 4; ++i) clip.ser.ticks.push_back(635613595230000000 + i * 2500000);
    const std::string path = clip.Write();
    const Outcome rows = Tarn("frames --csv " + path);
    EXPECT_EQ(rows.status, 1); // one has no light
    EXPECT_TRUE(rows.out.starts_with("frame,utc,sharpness,x,y,size,cut,error\n"
                                     "0,2015-03-07T21:12:03.000000Z,0."))
        << rows.out;
    EXPECT_TRUE(Has(rows, "\n2,2015-03-07T21:12:03.500000Z,,,,,,no light stands out of the sky\n"))
        << rows.out;
    double sharpness = 0;
    double x = 0;
    double y = 0;
    double size = 0;
    int cut = -1;
    const std::size_t second = rows.out.find("\n1,") + 31;
    ASSERT_EQ(std::sscanf(rows.out.c_str() + second, "%lf,%lf,%lf,%lf,%d", &sharpness, &x, &y,
                          &size, &cut),
              5)
        << rows.out;
    EXPECT_NEAR(x, 31, 0.5);
    EXPECT_NEAR(y, 33, 0.5);
    EXPECT_NEAR(size, 32, 4);
    EXPECT_EQ(cut, 0);
    EXPECT_TRUE(Has(rows, ",1,\n")) << rows.out; // the last is cut
}

TEST(ClipFrames, TheBestAreFilesWithTheSamplesOfTheClip) {
    for (const int bits : {8, 12, 16}) {
        SCOPED_TRACE(bits);
        Clip clip;
        clip.ser.bits = bits;
        clip.ser.color = bits == 12 ? 8 : 0;
        clip.ser.highByteFirst = bits == 16;
        const int most = (1 << bits) - 1;
        for (const double blur : {4.0, 1.0, 3.0, 2.0, 5.0})
            clip.ser.frames.push_back(Disc(32 + blur, 32, blur, most));
        const std::string path = clip.Write();
        const TestFolder target;
        const Outcome best = Tarn("frames --best 40% --to " + target.Path() + " " + path);
        EXPECT_EQ(best.status, 0) << best.out;
        EXPECT_EQ(best.out, "frame 1 -> " + target.Path() + "/mars_0001.fits\nframe 3 -> " +
                                target.Path() + "/mars_0002.fits\n");
        const Tree files = ReadTree(target.Path());
        ASSERT_EQ(files.size(), 2U);
        EXPECT_EQ(SamplesOf(files.at("mars_0001.fits")), clip.ser.frames[1]);
        EXPECT_EQ(SamplesOf(files.at("mars_0002.fits")), clip.ser.frames[3]);
        EXPECT_NE(files.at("mars_0001.fits").find("OBSERVER= 'An observer'"), std::string::npos);
        EXPECT_EQ(files.at("mars_0001.fits").find("BAYERPAT= 'RGGB") != std::string::npos,
                  bits == 12);
        // Again: nothing is written over; then all is taken back.
        EXPECT_EQ(Tarn("frames --best 1 --to " + target.Path() + " " + path).status, 1);
        EXPECT_EQ(ReadTree(target.Path()), files);
        EXPECT_EQ(Tarn("undo").status, 0);
        EXPECT_EQ(ReadTree(target.Path()), Tree());
        EXPECT_EQ(BytesOf(path), SerBytes(clip.ser));
    }
}

TEST(ClipFrames, AlignedDiscsLieOnEachOther) {
    Clip clip;
    clip.ser.frames = {Disc(32, 32, 1, 255), Disc(29, 36, 1.5, 255)};
    const std::string path = clip.Write();
    const TestFolder target;
    EXPECT_EQ(Tarn("frames --best 2 --to " + target.Path() + " --align " + path).status, 0);
    const std::vector<int> shifted = SamplesOf(ReadTree(target.Path()).at("mars_0002.fits"));
    const std::vector<int>& source = clip.ser.frames[1];
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{{32, 32}, {20, 40}, {45, 25}})
        EXPECT_EQ(shifted[std::size_t(y * kSide + x)],
                  source[std::size_t((y + 4) * kSide + x - 3)]);
    EXPECT_EQ(shifted[0], 0); // nothing of the clip falls there
}

TEST(ClipFrames, BrokenClipsAreToldAndRatedAsFarAsTheyGo) {
    Clip clip;
    clip.ser.frames = {Disc(32, 32, 1, 255), Disc(32, 32, 2, 255), Disc(32, 32, 3, 255)};
    const std::string whole = SerBytes(clip.ser);
    const std::string cut = clip.folder.Write("cut.ser", whole.substr(0, 178 + 64 * 64 * 5 / 2));
    const Outcome half = Tarn("frames --csv " + cut);
    EXPECT_EQ(half.status, 1);
    EXPECT_TRUE(Has(half, "it is cut off: 2 of 3 frames are there")) << half.out;
    EXPECT_TRUE(Has(half, "\n1,,")) << half.out;
    EXPECT_FALSE(Has(half, "\n2,")) << half.out;
    EXPECT_TRUE(Has(half, "\n,,,,,,,it is cut off")) << half.out;
    clip.ser.framesStated = 0; // its recording was broken off
    EXPECT_EQ(Tarn("frames --csv " + clip.Write()).status, 0);
    EXPECT_EQ(Tarn("frames " + clip.folder.Write("none.ser", "LUCAM-RECORDER")).status, 1);
    EXPECT_EQ(Tarn("frames " + clip.folder.Path() + "/gone.ser").status, 1);
    EXPECT_EQ(Tarn("frames " + clip.folder.Write("text.avi", "no clip")).status, 1);
    for (const char* words : {"", "a b", "--best 3 a", "--to . a", "--align a", "--best 0 --to . a",
                              "--best 1.5 --to . a", "--best 101% --to . a"})
        EXPECT_EQ(Tarn(std::string("frames ") + words).status, 2) << words;
}

} // namespace
} // namespace tarn::testing
