// What was measured is found again, for the very file that it was measured of.
#include "sky/measures/MeasureStore.h"
#include "support/TestFolder.h"

#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

FrameMeasures Row() {
    FrameMeasures row;
    row.width = 600;
    row.height = 400;
    row.stars = 58;
    row.saturated = 2;
    row.hfr = 2.125;
    row.eccentricity = 0.25;
    row.background = 1000.5;
    row.noise = 33.25;
    row.sharpness = 1e-5;
    row.brightest = {{1.5F, 2.25F, 1000}, {3, 4, 500}};
    row.series = "Ha\n300\n600 x 400";
    row.fault = "of no use";
    return row; // without a FWHM
}

void ExpectRow(const std::optional<FrameMeasures>& found) {
    ASSERT_TRUE(found);
    const FrameMeasures row = Row();
    EXPECT_EQ(found->width, row.width);
    EXPECT_EQ(found->height, row.height);
    EXPECT_EQ(found->stars, row.stars);
    EXPECT_EQ(found->saturated, row.saturated);
    EXPECT_EQ(found->hfr, row.hfr);
    EXPECT_TRUE(std::isnan(found->fwhm));
    EXPECT_EQ(found->eccentricity, row.eccentricity);
    EXPECT_EQ(found->background, row.background);
    EXPECT_EQ(found->noise, row.noise);
    EXPECT_EQ(found->sharpness, row.sharpness);
    EXPECT_EQ(found->brightest, row.brightest);
    EXPECT_EQ(found->series, row.series);
    EXPECT_EQ(found->fault, row.fault);
}

const FileLook kLook{.bytes = 480000, .seconds = 1700000000, .nanoseconds = 123456789};

} // namespace

TEST(MeasureStore, FindsWhatWasPutAlsoLater) {
    const TestFolder folder;
    const std::string file = folder.Path() + "/measures.sqlite";
    const std::string odd = "/night/\xFF 'M 31'.fits";
    {
        MeasureStore store(file);
        store.Put(odd, kLook, Row());
        ExpectRow(store.Find(odd, kLook));
    }
    MeasureStore store(file);
    ExpectRow(store.Find(odd, kLook));
    EXPECT_FALSE(store.Find("/night/other.fits", kLook));
}

TEST(MeasureStore, AnotherStateOfTheFileIsNotFound) {
    const TestFolder folder;
    MeasureStore store(folder.Path() + "/measures.sqlite");
    store.Put("/a.fits", kLook, Row());
    for (auto FileLook::*member : {&FileLook::bytes, &FileLook::seconds, &FileLook::nanoseconds}) {
        FileLook other = kLook;
        other.*member += 1;
        EXPECT_FALSE(store.Find("/a.fits", other));
    }
    FileLook later = kLook;
    later.seconds += 60;
    store.Put("/a.fits", later, Row());
    EXPECT_FALSE(store.Find("/a.fits", kLook)); // one state a file
    ExpectRow(store.Find("/a.fits", later));
}

TEST(MeasureStore, FilesThatWentAreDropped) {
    const TestFolder folder;
    MeasureStore store(folder.Path() + "/measures.sqlite");
    const std::string stays = folder.Write("a.fits", "");
    const std::string went = folder.Path() + "/b.fits";
    const std::string below = folder.Path() + "/sub/c.fits"; // of another folder
    for (const std::string& path : {stays, went, below}) store.Put(path, kLook, Row());
    store.DropVanished(folder.Path());
    ExpectRow(store.Find(stays, kLook));
    EXPECT_FALSE(store.Find(went, kLook));
    ExpectRow(store.Find(below, kLook));
}

TEST(MeasureStore, ADamagedDatabaseIsBegunAnew) {
    const TestFolder folder;
    const std::string file = folder.Write("measures.sqlite", std::string(5000, 'x'));
    MeasureStore store(file);
    store.Put("/a.fits", kLook, Row());
    ExpectRow(store.Find("/a.fits", kLook));
}

TEST(MeasureStore, WithoutADatabaseNothingIsKept) {
    const TestFolder folder;
    MeasureStore nowhere(folder.Path() + "/none/measures.sqlite");
    nowhere.Put("/a.fits", kLook, Row());
    EXPECT_FALSE(nowhere.Find("/a.fits", kLook));
    nowhere.DropVanished("/");

    const std::string file = folder.Path() + "/measures.sqlite";
    MeasureStore first(file);
    first.Put("/a.fits", kLook, Row());
    sqlite3* other = nullptr;
    ASSERT_EQ(::sqlite3_open(file.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(::sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    FileLook later = kLook;
    later.seconds += 1;
    first.Put("/a.fits", later, Row());
    EXPECT_FALSE(first.Find("/a.fits", later));
    ::sqlite3_close(other);
    ExpectRow(first.Find("/a.fits", kLook));
}
