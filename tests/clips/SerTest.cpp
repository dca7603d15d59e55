#include "MadeSer.h"
#include "support/TestFolder.h"

#include "clips/SerFile.h"
#include "clips/SerWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace tarn::testing {
namespace {

using Samples = std::vector<std::uint16_t>;

struct SerDesk {
    TestFolder folder;
    SerFile file;

    std::string Open(const std::string& bytes) { return file.Open(folder.Write("a.ser", bytes)); }
    Samples Frame(int number) {
        Samples samples;
        EXPECT_EQ(file.ReadFrame(number, samples), "");
        return samples;
    }
    Samples Colors(int number) { return SerColors(file.Header(), Frame(number)); }
};

} // namespace

TEST(Ser, SamplesOfEveryDepthReachFromBlackToWhite) {
    for (const int bits : {8, 10, 12, 16})
        for (const bool highByteFirst : {false, true}) {
            SerDesk d;
            const int most = (1 << bits) - 1;
            // A slope, by which the order of the bytes shows.
            ASSERT_EQ(d.Open(SerBytes({4,
                                       2,
                                       bits,
                                       0,
                                       highByteFirst,
                                       {{0, 1, 2, 3, 4, 5, 6, 7},
                                        {0, most / 4, most / 2, most, most, most, most, 65535}}})),
                      "");
            EXPECT_EQ(d.Frame(0)[7], 7u * 65535 / unsigned(most)) << bits << highByteFirst;
            EXPECT_EQ(d.Frame(1)[3], 65535) << bits << highByteFirst;
            EXPECT_EQ(d.Frame(1)[0], 0) << bits << highByteFirst;
            EXPECT_EQ(d.Frame(1)[7], 65535) << "more than the depth can say is white";
        }
}

TEST(Ser, ColorsStandWhereTheirPatternHasThem) {
    // A picture that is all red: only the red places of the pattern are lit.
    const std::vector<std::pair<int, int>> kRedPlaces = {{8, 0}, {9, 1}, {10, 4}, {11, 5}};
    for (const auto& [color, first] : kRedPlaces) {
        SerDesk d;
        std::vector<int> frame(16);
        for (int i = 0; i < 16; ++i)
            if (i % 2 == first % 2 && (i / 4) % 2 == first / 4) frame[std::size_t(i)] = 200;
        ASSERT_EQ(d.Open(SerBytes({4, 4, 8, color, false, {frame}})), "");
        const Samples colors = d.Colors(0);
        for (std::size_t i = 0; i < 16; ++i) {
            EXPECT_EQ(colors[3 * i] >> 8, 200) << color << " " << i;
            EXPECT_EQ(colors[3 * i + 1], 0) << color << " " << i;
            EXPECT_EQ(colors[3 * i + 2], 0) << color << " " << i;
        }
    }
    // At an edge three neighbours may have a colour; their mean is cut. None is black.
    SerDesk edge;
    ASSERT_EQ(edge.Open(SerBytes({3, 2, 8, 8, false, {{0, 100, 0, 101, 0, 101}}})), "");
    EXPECT_EQ(edge.Colors(0)[3 * 1 + 1], 100 * 257); // its own green
    EXPECT_EQ(edge.Colors(0)[3 * 1 + 2], 0);         // the blue one's
    EXPECT_EQ(edge.Colors(0)[3 * 4 + 1], 302 * 257 / 3);
    ASSERT_EQ(edge.Open(SerBytes({1, 1, 8, 8, false, {{200}}})), "");
    EXPECT_EQ(edge.Colors(0), (Samples{200 * 257, 0, 0}));
    for (const int color : {100, 101}) {
        SerDesk d;
        ASSERT_EQ(d.Open(SerBytes({1, 1, 8, color, false, {{10, 20, 30}}})), "");
        const Samples colors = d.Colors(0);
        EXPECT_EQ(colors[0] >> 8, color == 100 ? 10 : 30);
        EXPECT_EQ(colors[1] >> 8, 20);
        EXPECT_EQ(colors[2] >> 8, color == 100 ? 30 : 10);
    }
}

TEST(Ser, TimesAndNamesAreRead) {
    SerDesk d;
    SerClip clip{2, 1, 8, 0, false, {{1, 2}, {3, 4}, {5, 6}}, {5000000, 10000000, 25000000}};
    ASSERT_EQ(d.Open(SerBytes(clip)), "");
    EXPECT_EQ(d.file.Times(), (std::vector<double>{0, 0.5, 2}));
    EXPECT_EQ(d.file.Header().observer, "An observer");
    EXPECT_EQ(d.file.Header().telescope, "A telescope");
    for (const int ticks : {1, 5000000}) { // time that runs back or stands still is none
        clip.ticks[1] = ticks;
        ASSERT_EQ(d.Open(SerBytes(clip)), "");
        EXPECT_TRUE(d.file.Times().empty()) << ticks;
    }
}

TEST(Ser, DamagedFilesAreRefusedOrShortened) {
    SerDesk d;
    const std::string whole = SerBytes({4, 1, 8, 0, false, {{1, 2, 3, 4}, {5, 6, 7, 8}}});
    ASSERT_EQ(d.Open(whole.substr(0, whole.size() - 1)), "");
    EXPECT_EQ(d.file.Header().frames, 1);
    EXPECT_TRUE(d.file.Times().empty());
    Samples samples;
    EXPECT_NE(d.file.ReadFrame(1, samples), "");
    EXPECT_NE(d.file.ReadFrame(-1, samples), "");
    EXPECT_EQ(d.Open(SerBytes({4, 1, 8, 0, false, {{1, 2, 3, 4}}, {}, -1}).substr(0, 180)),
              "The clip has no frames");
    // A recording that was broken off: its count was never written, nor its times.
    ASSERT_EQ(d.Open(SerBytes({4, 1, 8, 0, false, {{1, 2, 3, 4}, {5, 6, 7, 8}}, {}, 0}) + "xy"),
              "");
    EXPECT_EQ(d.file.Header().frames, 2);
    EXPECT_TRUE(d.file.Times().empty());
    EXPECT_EQ(d.file.ReadFrame(1, samples), "");
    EXPECT_EQ(samples, (Samples{5 * 257, 6 * 257, 7 * 257, 8 * 257}));
    for (const SerClip& clip : {SerClip{0, 1}, SerClip{4, -1}, SerClip{1 << 20, 1},
                                SerClip{4, 1, 0}, SerClip{4, 1, 17}, SerClip{65535, 65535, 16}})
        EXPECT_NE(d.Open(SerBytes(clip)), "");
    // A damaged size is not believed, whatever the length of the file.
    const std::string huge =
        d.folder.Write("h.ser", SerBytes({60000, 60000, 8, 0, false, {}, {}, 1}));
    std::filesystem::resize_file(huge, 178 + 3'600'000'000);
    EXPECT_EQ(d.file.Open(huge), "The frames are too large");
    for (const std::string& bytes : {std::string(), std::string("LUCAM"), whole.substr(0, 177)})
        EXPECT_EQ(d.Open(bytes), "Not a SER file");
    EXPECT_NE(d.file.Open(d.folder.Path() + "/none.ser"), "");
}

// A sparse file of a few blocks on the disk claims two billion frames.
TEST(Ser, FramesAndTimesOfAHugeClaimAreBounded) {
    SerDesk d;
    std::string head = SerBytes({1, 1, 8, 0, false, {{7}}}).substr(0, 178);
    for (int i = 38; i < 41; ++i) head[std::size_t(i)] = '\xFF';
    head[41] = 0x6F;
    const std::string path = d.folder.Write("a.ser", head);
    std::filesystem::resize_file(path, 178 + 18LL * 0x6FFFFFFF);
    ASSERT_EQ(d.file.Open(path), "");
    EXPECT_LE(d.file.Header().frames, 5'000'000);
    EXPECT_EQ(d.file.Times(), std::vector<double>());
    EXPECT_EQ(d.file.Length(), 0);
}

TEST(SerWriter, FramesMayComeInAnyOrder) {
    SerHeader header;
    header.width = 3;
    header.height = 2;
    header.bits = 12;
    header.color = SerHeader::Bggr;
    header.observer = "An observer";
    header.instrument = "A camera";
    header.telescope = "A telescope";
    SerClip whole{.width = 3, .height = 2, .bits = 12, .color = SerHeader::Bggr};
    for (int i = 0; i < 4; ++i) {
        whole.frames.push_back(std::vector<int>(6, 1000 * i + 7));
        whole.ticks.push_back(5'000 + i);
    }
    for (const std::vector<std::size_t>& order :
         {std::vector<std::size_t>{0, 1, 2, 3}, {3, 1, 0, 2}, {1, 3, 2, 0}}) {
        std::string file;
        SerWriter writer(SerHeaderBytes(header), 12, 4,
                         [&](std::size_t at, std::string_view bytes) {
                             EXPECT_LE(at, file.size());
                             file.replace(at, std::min(bytes.size(), file.size() - at), bytes);
                             return true;
                         });
        for (const std::size_t frame : order) {
            std::vector<std::uint8_t> bytes;
            for (const int sample : whole.frames[frame])
                for (const int shift : {0, 8}) bytes.push_back(std::uint8_t(sample >> shift));
            EXPECT_TRUE(writer.Add(frame, bytes));
        }
        EXPECT_TRUE(writer.Close(whole.ticks));
        EXPECT_EQ(file, SerBytes(whole));
    }
}

} // namespace tarn::testing
