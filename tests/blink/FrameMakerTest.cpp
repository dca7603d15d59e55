// Frames made in the background: which first, how many are kept, what becomes of late answers.
#include "MadeSeries.h"

#include "blink/FrameMaker.h"
#include "blink/LateWork.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace tarn::testing {
namespace {

constexpr int kWidth = 300;
constexpr int kHeight = 200;

template <typename Test> bool Comes(const Test& test) {
    for (int i = 0; i < 2000; ++i) {
        if (test()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

// Frames in memory; reading is written down, and waits while it is held.
struct MadeFrames {
    MadeSeries series{kWidth, kHeight, 5, 12};
    std::shared_ptr<BlinkSeries> blink = std::make_shared<BlinkSeries>();
    std::mutex mutex;
    std::vector<std::size_t> read;
    std::atomic<bool> held = false;
    std::set<std::size_t> broken;

    explicit MadeFrames(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            series.Add({.fromField = TurnedMap(kWidth, kHeight, 0, double(i), 0)},
                       unsigned(30 + i));
            blink->frames.push_back({i, FrameMap{1, 0, -double(i), 0, 1, 0}, 1});
        }
        blink->read = [this](std::size_t number, std::string& error) -> std::optional<ReadFrame> {
            while (held) std::this_thread::sleep_for(std::chrono::milliseconds(1));
            const std::lock_guard lock(mutex);
            read.push_back(number);
            if (broken.contains(number)) {
                error = "The file ends too early";
                return std::nullopt;
            }
            return ReadFrame{series.Samples(number), 1, true};
        };
    }
    std::vector<std::size_t> Read() {
        const std::lock_guard lock(mutex);
        return read;
    }
};

GridView Whole() {
    GridView view{kWidth, kHeight};
    view.mirrorAt = kHeight - 1;
    return view;
}

std::vector<std::size_t> MadeOf(const FrameMaker& maker, std::size_t count) {
    std::vector<std::size_t> made;
    for (std::size_t i = 0; i < count; ++i)
        if (maker.IsMade(i)) made.push_back(i);
    return made;
}

TEST(FrameMaker, MakesThePreferredFirstAndReadsEachFileOnce) {
    MadeFrames frames(6);
    frames.blink->reference = 2;
    FrameMaker maker([] {}, 1);
    maker.Show(frames.blink);
    ASSERT_TRUE(Comes([&] { return maker.Ground() != nullptr; }));
    EXPECT_EQ(maker.Ground()->grid, (GridSize{kWidth, kHeight, 1, true}));
    maker.Prefer({4, 5, 3, 2, 1, 0});
    maker.SetView(Whole());
    ASSERT_TRUE(Comes([&] { return maker.Progress().made == 6; }));
    EXPECT_EQ(frames.Read(), (std::vector<std::size_t>{2, 4, 5, 3, 1, 0}));
    GridView closer = Whole();
    closer.step = 0.5;
    maker.SetView(closer);
    ASSERT_TRUE(Comes([&] { return maker.Progress().made == 6; }));
    EXPECT_EQ(frames.Read().size(), 6U); // their samples have room
    EXPECT_EQ(maker.Frame(1)->view, closer);
}

TEST(FrameMaker, KeepsToItsMemoryWithTheNextFrames) {
    MadeFrames frames(10);
    FrameMaker maker([] {}, 2);
    const std::size_t bytes = std::size_t(kWidth) * kHeight * sizeof(std::int16_t);
    maker.SetMemory(bytes * 6); // of which four are for frames
    maker.Show(frames.blink);
    maker.Prefer({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    maker.SetView(Whole());
    ASSERT_TRUE(Comes([&] { return MadeOf(maker, 10).size() == 4; }));
    EXPECT_FALSE(maker.Progress().fits);
    maker.Prefer({2, 3, 4, 5, 6, 7, 8, 9, 0, 1});
    ASSERT_TRUE(Comes([&] { return maker.IsMade(4) && maker.IsMade(5); }));
    EXPECT_EQ(MadeOf(maker, 10), (std::vector<std::size_t>{2, 3, 4, 5}));
}

TEST(FrameMaker, TellsWhatCannotBeReadAndGoesOn) {
    MadeFrames frames(4);
    frames.broken = {1};
    FrameMaker maker([] {});
    maker.Show(frames.blink);
    maker.Prefer({0, 1, 2, 3});
    maker.SetView(Whole());
    ASSERT_TRUE(Comes([&] { return maker.Progress().made == 3; }));
    ASSERT_TRUE(Comes([&] { return !maker.Faults().empty(); }));
    EXPECT_EQ(maker.Faults(), (std::map<std::size_t, std::string>{{1, "The file ends too early"}}));
    EXPECT_EQ(maker.Progress().total, 3U);
    frames.broken = {0};
    maker.Show(frames.blink);
    ASSERT_TRUE(Comes([&] { return !maker.Progress().fault.empty(); }));
    EXPECT_EQ(maker.Progress().fault, "The file ends too early"); // of the reference
}

TEST(FrameMaker, DropsAnswersOfAnOlderViewOrSeries) {
    MadeFrames first(3);
    MadeFrames second(3);
    FrameMaker maker([] {}, 1);
    maker.Show(first.blink);
    maker.Prefer({0, 1, 2});
    ASSERT_TRUE(Comes([&] { return maker.Ground() != nullptr; }));
    first.held = true;
    GridView old = Whole();
    old.step = 2;
    maker.SetView(old);
    ASSERT_TRUE(Comes([&] { return maker.IsMade(0); })); // its samples were at hand
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    maker.SetView(Whole()); // while the next one is read
    first.held = false;
    ASSERT_TRUE(Comes([&] { return maker.Progress().made == 3; }));
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(maker.Frame(i)->view, Whole()) << i;

    first.held = true;
    maker.SetMemory(1); // no samples are kept any more
    old.step = 3;
    maker.SetView(old);
    maker.Show(second.blink);
    maker.Prefer({0, 1, 2});
    maker.SetView(Whole());
    first.held = false;
    ASSERT_TRUE(Comes([&] { return maker.Progress().made == 3; }));
    EXPECT_EQ(second.Read().front(), 0U);
    EXPECT_EQ(maker.Faults(), (std::map<std::size_t, std::string>{}));
}

TEST(FrameMaker, MedianIsOfTheViewThatIsShown) {
    MadeFrames frames(5);
    FrameMaker maker([] {});
    maker.Show(frames.blink);
    maker.Prefer({0, 1, 2, 3, 4});
    maker.SetView(Whole());
    ASSERT_TRUE(Comes([&] { return maker.Progress().made == 5; }));
    EXPECT_EQ(maker.Median(), nullptr); // nobody wants it
    maker.WantMedian(true);
    ASSERT_TRUE(Comes([&] { return maker.Median() != nullptr; }));
    GridView closer = Whole();
    closer.step = 0.5;
    maker.SetView(closer);
    ASSERT_TRUE(Comes([&] { return maker.Median()->view == closer; }));
    std::vector<const tarn::SeenFrame*> all;
    std::vector<std::shared_ptr<const tarn::SeenFrame>> held;
    for (std::size_t i = 0; i < 5; ++i) {
        held.push_back(maker.Frame(i));
        all.push_back(held.back().get());
    }
    EXPECT_EQ(maker.Median()->codes, MedianOfFrames(all).codes);
}

TEST(LateWork, TheLastOneBegunAnswersAndWhatIsGivenUpDoesNot) {
    std::atomic<int> told = 0;
    std::vector<std::string> answers;
    std::atomic<bool> held = true;
    LateWork work([&] { ++told; });
    const auto task = [&](const char* name) {
        return [&, name](std::atomic<bool>& givenUp) -> LateWork::Answer {
            while (held && !givenUp) std::this_thread::sleep_for(std::chrono::milliseconds(1));
            return [&, name] { answers.emplace_back(name); };
        };
    };
    work.Begin(task("first"));
    work.Begin(task("second"));
    EXPECT_TRUE(work.IsBusy());
    held = false;
    ASSERT_TRUE(Comes([&] { return told > 0; }));
    work.Take();
    work.Take(); // only once
    EXPECT_EQ(answers, std::vector<std::string>{"second"});
    held = true;
    work.Begin(task("third"));
    work.GiveUp();
    EXPECT_FALSE(work.IsBusy());
    held = false;
    work.Begin([&](std::atomic<bool>&) -> LateWork::Answer { throw std::bad_alloc(); });
    work.Begin(task("fourth"));
    ASSERT_TRUE(Comes([&] { return told > 1; }));
    work.Take();
    EXPECT_EQ(answers, (std::vector<std::string>{"second", "fourth"}));
}

} // namespace
} // namespace tarn::testing
