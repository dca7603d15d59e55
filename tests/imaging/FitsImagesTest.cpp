// Files with several pictures, pictures whose colours lie together, and files packed as one whole.
#include "FitsFiles.h"
#include "PixelRows.h"
#include "support/TestFolder.h"

#include "imaging/fits/FitsFile.h"
#include "imaging/fits/FitsLines.h"
#include "imaging/fits/FitsPixels.h"
#include "imaging/fits/ImageChoice.h"
#include "imaging/fits/SkyFile.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

double Ramp(std::size_t i) {
    return double(i);
}

class FitsImages : public ::testing::Test {
protected:
    ~FitsImages() override { ChooseImage({}); }

    // Of the file's picture with that number; all channels, parted by ", ".
    std::string Rows(const std::string& bytes, int image) {
        error.clear();
        auto samples = ReadFitsSamples(folder.Write("a.fit", bytes), image, error);
        if (!samples) return error;
        const FitsPixels pixels(std::move(*samples), 0, 0);
        std::string rows = RowsOf(pixels);
        for (int i = 1; i < pixels.Channels(); ++i) rows += ", " + RowsOf(pixels, i);
        return rows;
    }
    std::vector<std::string> AllRows(const std::string& bytes) {
        std::vector<std::string> all{Rows(bytes, 0)};
        const auto header = ReadFitsHeader(folder.Path() + "/a.fit", 0, error);
        for (int i = 1; header && i < header->images; ++i) all.push_back(Rows(bytes, i));
        return all;
    }

    TestFolder folder;
    std::string error;
};

using Texts = std::vector<std::string>;

TEST_F(FitsImages, PlanesAndPartsAreStepsThroughTheFile) {
    EXPECT_EQ(AllRows(FitsBytes(16, {2, 1, 4}, Ramp)), (Texts{"0 1", "2 3", "4 5", "6 7"}));
    EXPECT_EQ(AllRows(FitsBytes(-32, {2, 1, 2, 2}, Ramp)), (Texts{"0 1", "2 3", "4 5", "6 7"}));
    EXPECT_EQ(AllRows(FitsBytes(8, {2, 1, 3, 2}, Ramp)),
              (Texts{"0 1, 2 3, 4 5", "6 7, 8 9, 10 11"}));
    const std::string none = FitsBytes(8, {}, nullptr, {{"OBJECT", "'M 31'"}});
    const auto more = [](std::size_t i) { return double(i) + 7; };
    const std::string parts = none + FitsExtension(16, {2, 1, 2}, Ramp) +
                              FitsExtension(8, {4}, Ramp) + FitsExtension(8, {1, 1}, more);
    EXPECT_EQ(AllRows(parts), (Texts{"0 1", "2 3", "7"}));
    EXPECT_EQ(Rows(parts, 3), "0 1"); // none, so the first
    const auto last = ReadFitsHeader(folder.Path() + "/a.fit", 2, error);
    EXPECT_EQ(last->width, 1);
    EXPECT_EQ(last->object, "M 31");
    // What is broken behind it leaves the first as it is.
    EXPECT_EQ(AllRows(parts.substr(0, parts.size() - 2880)),
              (Texts{"0 1", "2 3", "The file ends too early"}));
    EXPECT_EQ(AllRows(FitsBytes(8, {2, 1}, Ramp) + std::string(2880, 'x')), (Texts{"0 1"}));
}

TEST_F(FitsImages, ColoursOfAPixelMayLieTogether) {
    for (const int bits : {8, 16, -32}) {
        const std::string bytes = FitsBytes(bits, {3, 4, 5}, Ramp);
        EXPECT_EQ(Rows(bytes, 0).substr(0, 11), "48 51 54 57") << bits;
        const auto header = ReadFitsHeader(folder.Path() + "/a.fit", 0, error);
        EXPECT_EQ(header->width, 4);
        EXPECT_EQ(header->height, 5);
        EXPECT_EQ(header->planes, 3);
        const std::string rows = Rows(bytes, 0);
        EXPECT_EQ(rows.substr(rows.rfind(", ")).substr(0, 13), ", 50 53 56 59") << bits;
    }
    EXPECT_EQ(AllRows(FitsBytes(16, {3, 4, 5, 1}, Ramp)), AllRows(FitsBytes(16, {3, 4, 5}, Ramp)));
    const auto of = [](int first) { return [first](std::size_t i) { return double(i) + first; }; };
    EXPECT_EQ(AllRows(FitsBytes(16, {3, 4, 5, 2}, Ramp)),
              (Texts{Rows(FitsBytes(16, {3, 4, 5}, Ramp), 0),
                     Rows(FitsBytes(16, {3, 4, 5}, of(60)), 0)}));
    const auto flat = FitsBytes(16, {3, 40, 50}, Ramp);
    EXPECT_EQ(Rows(flat.substr(0, 2880 * 2), 0), "The file ends too early");
}

TEST_F(FitsImages, WhatIsChosenIsReadUntilAnotherFileIsChosen) {
    const std::string path = folder.Write("a.fit", FitsBytes(16, {2, 1, 2}, Ramp));
    const std::string other = folder.Write("b.fit", FitsBytes(16, {1, 1, 2}, Ramp));
    const auto choose = [](const std::string& of, int image) {
        struct stat facts {};
        ASSERT_EQ(::stat(of.c_str(), &facts), 0);
        ChooseImage({std::int64_t(facts.st_dev), std::int64_t(facts.st_ino), image});
    };
    const auto rows = [&](const std::string& of) {
        return RowsOf(*FitsPixels::Read(of, 0, 0, error));
    };
    choose(path, 1);
    EXPECT_EQ(rows(path), "2 3");
    EXPECT_EQ(rows(other), "0");
    EXPECT_EQ(SkyFactsOf(path).lines.back(), "       Image: 2 of 2");
    {
        const AutomaticStretchOnly first;
        EXPECT_EQ(rows(path), "0 1");
    }
    {
        const ReadsImage first(0);
        EXPECT_EQ(rows(path), "0 1");
    }
    choose(other, 1);
    EXPECT_EQ(rows(path), "0 1");
    EXPECT_EQ(rows(other), "1");
}

TEST_F(FitsImages, PackedFilesAreReadAsWhatIsInThem) {
    const std::string plain = FitsBytes(16, {60, 60, 2}, Ramp, {{"OBJECT", "'M 31'"}});
    const std::string packed = Gzipped(plain);
    const std::string path = folder.Write("a.fits.gz", packed);
    EXPECT_TRUE(IsSkyFile(path));
    EXPECT_EQ(SkyFactsOf(path).lines.front(), "      Object: M 31");
    EXPECT_EQ(FitsPixels::Read(path, 0, 0, error)->Value(0, 1, 59), 1) << error;
    folder.Write("a.fits.gz", Gzipped(FitsBytes(16, {2, 2}, [](auto) { return 9; })));
    EXPECT_EQ(FitsPixels::Read(path, 0, 0, error)->Value(0, 1, 1), 9) << error; // the new one
    const std::string cut = folder.Write("b.fits.gz", packed.substr(0, packed.size() / 3));
    error.clear();
    EXPECT_TRUE(FitsPixels::Read(cut, 0, 0, error));
    EXPECT_EQ(error, "The file ends too early");
    EXPECT_FALSE(IsSkyFile(folder.Write("c.gz", Gzipped("some text"))));
    EXPECT_FALSE(IsSkyFile(folder.Write("d.gz", packed.substr(0, 9))));
}

// The first is never unpacked, the second never given to the library.
TEST_F(FitsImages, WhatItsHeaderMakesHopelessIsToldAtOnce) {
    std::string huge = FitsBytes(8, {10, 10}, Ramp);
    for (const char* axis : {"NAXIS1", "NAXIS2"})
        huge.replace(huge.find(axis) + 10, 20, 15, ' ').replace(huge.find(axis) + 25, 0, "99999");
    const std::string packed = folder.Write("a.fits.gz", Gzipped(huge + std::string(8 << 20, 'x')));
    EXPECT_FALSE(FitsPixels::Read(packed, 0, 0, error));
    EXPECT_EQ(error, "The FITS file cannot be read: it is too large when unpacked");
    const std::vector<FitsWord> words(40'000, FitsWord{"REMARK", "'x'"});
    error.clear();
    EXPECT_FALSE(
        FitsPixels::Read(folder.Write("b.fits", FitsBytes(8, {10, 10}, Ramp, words)), 0, 0, error));
    EXPECT_EQ(error, "The FITS file cannot be read: its header has too many lines");
}

} // namespace
