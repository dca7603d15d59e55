// Frames measured on threads: what comes, in which order, and what is dropped.
#include "MadeNight.h"
#include "PictureFiles.h"

#include "sky/night/FolderMeasuring.h"
#include "sky/night/LateStars.h"
#include "support/TestFolder.h"

#include <QTest>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <map>

namespace tarn::testing {
namespace {

struct Measured {
    TestFolder folder;
    std::string store = folder.Path() + "/.measures.sqlite";
    std::atomic<int> told = 0;
    std::vector<std::string> names; // as they came
    std::map<std::string, MeasuredFile> files;

    std::string Add(const std::string& name, const MadeFrame& frame = {}) {
        return folder.Write(name, FrameBytes(frame, 300, 200, unsigned(name.size())));
    }
    void Take(FolderMeasuring& measuring) {
        for (MeasuredFile& file : measuring.Take()) {
            names.push_back(std::filesystem::path(file.path).filename());
            files[names.back()] = std::move(file);
        }
    }
    void AwaitAll(FolderMeasuring& measuring) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return measuring.Progress().IsDone(); }, 30000));
        Take(measuring);
    }
};

TEST(FolderMeasuring, TellsMeasuresTimesAndReasons) {
    Measured t;
    const std::vector<std::string> paths{
        t.Add("a.fits"), t.Add("dark.fits", {.type = "Dark", .stars = 0}),
        t.folder.Write("broken.fits", FrameBytes({}, 300, 200).substr(0, 6000)),
        t.folder.Path() + "/gone.fits"};
    FolderMeasuring measuring(t.store, [&] { ++t.told; });
    measuring.Show(paths);
    t.AwaitAll(measuring);
    EXPECT_NEAR(t.files["a.fits"].measures.hfr, 1.5, 0.1);
    EXPECT_EQ(t.files["a.fits"].taken, 1730836800);
    EXPECT_GT(t.files["a.fits"].look.bytes, 0);
    EXPECT_EQ(t.files["dark.fits"].measures.fault, "a dark frame");
    EXPECT_EQ(t.files["broken.fits"].measures.fault, "The file ends too early");
    EXPECT_EQ(t.files["gone.fits"].measures.fault, "No such file or directory");
    EXPECT_GE(t.told, 1);
}

TEST(FolderMeasuring, BeginsAtTheCurrentFile) {
    Measured t;
    std::vector<std::string> paths;
    for (const char name : {'a', 'b', 'c', 'd', 'e'})
        paths.push_back(t.Add({name, '.', 'f', 'i', 't', 's'}));
    FolderMeasuring measuring(
        t.store, [&] { ++t.told; }, 1);
    measuring.Cancel(); // nothing begins before it is known
    measuring.Show(paths);
    measuring.Cancel();
    measuring.Prefer(paths[3]);
    measuring.Resume();
    t.AwaitAll(measuring);
    // One may have begun at once, with the first.
    std::vector<std::string> rest;
    for (const std::string& name : t.names)
        if (name != "a.fits") rest.push_back(name);
    EXPECT_EQ(rest, (std::vector<std::string>{"d.fits", "e.fits", "c.fits", "b.fits"}));
}

TEST(FolderMeasuring, NothingIsMeasuredTwiceUnlessItChanged) {
    Measured t;
    const std::vector<std::string> paths{t.Add("a.fits"), t.Add("b.fits")};
    {
        FolderMeasuring measuring(t.store, [&] { ++t.told; });
        measuring.Show(paths);
        t.AwaitAll(measuring);
    }
    const double before = t.files["a.fits"].measures.hfr;
    t.files.clear();
    t.Add("b.fits", {.fwhm = 6});
    FolderMeasuring none(
        t.store, [&] { ++t.told; }, 0); // only what is kept can come
    none.Show(paths);
    EXPECT_TRUE(QTest::qWaitFor([&] { return none.Progress().done == 1; }, 10000));
    t.Take(none);
    EXPECT_EQ(t.files["a.fits"].measures.hfr, before);
    EXPECT_EQ(t.files.count("b.fits"), 0U);
    FolderMeasuring measuring(t.store, [&] { ++t.told; });
    measuring.Show(paths);
    t.AwaitAll(measuring);
    EXPECT_NEAR(t.files["b.fits"].measures.hfr, 3, 0.2);
}

TEST(FolderMeasuring, WhatIsNotShownAnyMoreIsDropped) {
    Measured t;
    const std::vector<std::string> first{t.Add("a.fits"), t.Add("b.fits")};
    const std::vector<std::string> second{t.Add("c.fits")};
    FolderMeasuring measuring(t.store, [&] { ++t.told; });
    measuring.Show(first);
    EXPECT_TRUE(QTest::qWaitFor([&] { return measuring.Progress().done > 0; }, 30000));
    measuring.Show(second);
    t.AwaitAll(measuring);
    EXPECT_EQ(t.names, (std::vector<std::string>{"c.fits"}));
    measuring.Cancel();
    measuring.Show({});
    EXPECT_TRUE(measuring.Progress().IsDone());
}

TEST(LateStars, ListsTheLastThatWasAskedFor) {
    Measured t;
    const std::string one = t.Add("a.fits");
    const std::string other = t.Add("b.fits");
    std::atomic<int> told = 0;
    LateStars stars([&] { ++told; });
    stars.Ask(one);
    stars.Ask(other);
    EXPECT_TRUE(QTest::qWaitFor([&] { return told > 0; }, 30000));
    const auto listed = stars.Take();
    ASSERT_TRUE(listed);
    EXPECT_EQ(listed->path, other);
    EXPECT_EQ(listed->listed.width, 300);
    EXPECT_TRUE(listed->listed.bottomUp); // the header does not say otherwise
    EXPECT_GT(listed->listed.stars.size(), 10U);
    EXPECT_FALSE(stars.Take());
}

} // namespace
} // namespace tarn::testing
