// A sum that is kept to be looked at, and given on.
#include "support/TestFolder.h"

#include "blink/MoverStrips.h"
#include "blink/SumPixels.h"

#include <gtest/gtest.h>

#include <map>

namespace tarn::testing {
namespace {

// Writes down what it is given; full after some rows where that is wished.
struct RecordingTarget : SumTarget {
    std::array<int, 3> size{};
    std::map<std::pair<int, int>, std::vector<float>> rows; // by colour and row
    std::size_t room = 1000;

    bool Begin(int width, int height, int colours) override {
        size = {width, height, colours};
        return true;
    }
    bool Write(int colour, int row, int count, const float* values) override {
        for (int i = 0; i < count; ++i, values += size[0]) {
            if (rows.size() == room) return false;
            rows[{colour, row + i}].assign(values, values + size[0]);
        }
        return true;
    }
};

TEST(SumPixels, AreSeenAsTheyWereWrittenAndGivenOn) {
    const TestFolder folder;
    const auto pixels = std::make_shared<SumPixels>(folder.Path());
    ASSERT_TRUE(pixels->Begin(3, 70, 2));
    for (const int colour : {1, 0})
        for (int row = 69; row >= 0; --row) {
            const float first = float(1000 * colour + 10 * row);
            const std::array<float, 3> values{first, first + 1, first + 2};
            ASSERT_TRUE(pixels->Write(colour, row, 1, values.data()));
        }
    const FrameSamples samples = pixels->Samples();
    EXPECT_EQ(samples.planes, 2);
    EXPECT_EQ(samples.At(0, 2, 0), 2);
    EXPECT_EQ(samples.At(1, 1, 69), 1691);
    RecordingTarget target;
    EXPECT_TRUE(pixels->WriteInto(target));
    EXPECT_EQ(target.size, (std::array{3, 70, 2}));
    EXPECT_EQ(target.rows.size(), 140U);
    EXPECT_EQ((target.rows[{1, 65}]), (std::vector<float>{1650, 1651, 1652}));
    RecordingTarget full;
    full.room = 5;
    EXPECT_FALSE(pixels->WriteInto(full));
}

TEST(SumPixels, CannotBeginWithoutAPlaceOrRoom) {
    SumPixels nowhere("/nowhere/at/all");
    EXPECT_FALSE(nowhere.Begin(3, 2, 1));
    const TestFolder folder;
    SumPixels large(folder.Path());
    EXPECT_FALSE(large.Begin(2000000, 2000000, 3)); // more than any disk has
}

TEST(MoverStrips, TextOfAMover) {
    FoundMovers found;
    found.paths = {"/n/a.fits", "/n/b.fits", "/n/c.fits"};
    Mover mover;
    mover.speed = 61.26;
    mover.angle = -12.5;
    mover.signal = 84;
    mover.sights = {{0, 10, 20, 900, 30}, {2, 15, 20.26, 950, 31}, {1, 20, 21, 940, 32}};
    found.result.movers = {Mover(), mover};
    found.scale = 2;
    EXPECT_EQ(MoverText(found, 1),
              "Mover 2: 61.3 pixels an hour, 122.5 arc seconds an hour, direction -12.5 degrees, "
              "signal 84.0\n"
              "a.fits  x 10.0  y 20.0  flux 900\n"
              "c.fits  x 15.0  y 20.3  flux 950\n"
              "b.fits  x 20.0  y 21.0  flux 940\n");
}

} // namespace
} // namespace tarn::testing
