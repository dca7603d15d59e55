// Who waits for whom when memory is short.
#include "platform/DecodeBudget.h"
#include "common/stop_flag.h"
#include "common/worker.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <mutex>
#include <vector>

namespace tarn::testing {
namespace {

using namespace std::chrono_literals;

constexpr long long kAll = 3200;

// A worker that takes and holds until it is let go.
struct Taker {
    Taker(DecodeBudget& budget, long long bytes)
        : worker([this, &budget, bytes] {
              const HeedsStop heeds(stop);
              const MayHurry hurries(hurry);
              const bool taken = budget.Take(bytes);
              answer.set_value(taken);
              letGo.get_future().wait();
              if (taken) budget.GiveBack(bytes);
          }) {}
    ~Taker() { LetGo(); }
    void LetGo() {
        if (!std::exchange(gone, true)) letGo.set_value();
        worker.Join();
    }
    bool HasAnswer() { return answered.wait_for(60ms) == std::future_status::ready; }

    std::promise<bool> answer;
    std::future<bool> answered = answer.get_future();
    std::promise<void> letGo;
    bool gone = false;
    std::atomic<bool> stop = false;
    std::atomic<bool> hurry = false;
    Worker worker; // last: it uses the others
};

} // namespace

TEST(DecodeBudget, SmallOnesNeverWaitBehindLargeOnes) {
    DecodeBudget budget(kAll);
    Taker large(budget, 2000);
    ASSERT_TRUE(large.answered.get());
    Taker second(budget, 2000);
    EXPECT_FALSE(second.HasAnswer());
    Taker small(budget, 100);
    EXPECT_TRUE(small.answered.get());
    EXPECT_EQ(budget.Taken(), 2100);
    large.LetGo();
    EXPECT_TRUE(second.answered.get());
}

TEST(DecodeBudget, LargeOnesGoInTheirOrderAndOneThatFillsAllGoesAlone) {
    DecodeBudget budget(kAll);
    Taker first(budget, 2000);
    ASSERT_TRUE(first.answered.get());
    Taker huge(budget, 10 * kAll);
    EXPECT_FALSE(huge.HasAnswer());
    Taker last(budget, 300); // there were room for it
    EXPECT_FALSE(last.HasAnswer());
    first.LetGo();
    EXPECT_TRUE(huge.answered.get());
    EXPECT_FALSE(last.HasAnswer());
    huge.LetGo();
    EXPECT_TRUE(last.answered.get());
    last.LetGo();
    EXPECT_EQ(budget.Taken(), 0);
}

TEST(DecodeBudget, WhoIsStoppedGivesUpAndWhoIsWaitedForPasses) {
    DecodeBudget budget(kAll);
    Taker holds(budget, 2400);
    ASSERT_TRUE(holds.answered.get());
    Taker stopped(budget, 2400);
    Taker hurried(budget, 2400);
    EXPECT_FALSE(hurried.HasAnswer());
    stopped.stop = true;
    EXPECT_FALSE(stopped.answered.get());
    hurried.hurry = true;
    EXPECT_TRUE(hurried.answered.get());
    EXPECT_EQ(budget.Taken(), 4800);
    EXPECT_TRUE(budget.Take(2400)) << "the window's thread does not stand still";
    budget.GiveBack(2400);
}

} // namespace tarn::testing
