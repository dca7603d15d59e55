// Frames read on a thread while its disk takes its time.
#include "clips/LateFrames.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace tarn::testing {
namespace {

using namespace std::chrono_literals;

// Each reading waits until it is let through.
struct Gate {
    std::mutex mutex;
    std::condition_variable changed;
    int open = 0;
    std::vector<int> begun;

    void Pass(int what) {
        std::unique_lock lock(mutex);
        begun.push_back(what);
        changed.notify_all();
        changed.wait(lock, [this] { return open > 0; });
        --open;
    }
    void Open(int count) {
        const std::lock_guard lock(mutex);
        open += count;
        changed.notify_all();
    }
    std::vector<int> AwaitBegun(std::size_t count) {
        std::unique_lock lock(mutex);
        changed.wait_for(lock, 5s, [&] { return begun.size() >= count; });
        return begun;
    }
};

class SlowReader : public FrameReader {
public:
    explicit SlowReader(std::shared_ptr<Gate> gate) : m_gate(std::move(gate)) {}
    std::string Open(ClipFacts& facts) override {
        m_gate->Pass(LateFrames::kOpen);
        facts.frames = 9;
        return {};
    }
    std::vector<double> Times() override {
        m_gate->Pass(LateFrames::kTimes);
        throw std::bad_alloc();
    }
    QImage Frame(int frame, std::string&) override {
        m_gate->Pass(frame);
        return QImage(frame + 1, 1, QImage::Format_RGB32);
    }

private:
    std::shared_ptr<Gate> m_gate;
};

struct SlowClip {
    std::shared_ptr<Gate> gate = std::make_shared<Gate>();
    LateFrames late{std::make_unique<SlowReader>(gate)};
};

} // namespace

TEST(LateFrames, TheNewestWishIsReadNextAndOthersAreNot) {
    SlowClip d;
    d.late.Ask(1);
    EXPECT_EQ(d.gate->AwaitBegun(1), std::vector<int>{1});
    for (const int frame : {2, 3, 4}) d.late.Ask(frame);
    EXPECT_FALSE(d.late.Take(20ms)); // nobody is held up
    d.gate->Open(2);
    EXPECT_EQ(d.gate->AwaitBegun(2), (std::vector<int>{1, 4}));
    std::optional<LateFrames::Answer> answer;
    for (int i = 0; i < 100 && (!answer || answer->what != 4); ++i) answer = d.late.Take(50ms);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->what, 4);
    EXPECT_EQ(answer->picture.width(), 5);
    EXPECT_EQ(answer->error, "");
    d.gate->Open(1);
    d.late.Ask(LateFrames::kTimes);
    answer = d.late.Take(5s);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->error, "Not enough memory");
}

TEST(LateFrames, ClipsThatWereLeftEndInAnyOrder) {
    std::vector<std::shared_ptr<Gate>> gates;
    for (int i = 0; i < 6; ++i) {
        gates.push_back(std::make_shared<Gate>());
        LateFrames late(std::make_unique<SlowReader>(gates.back()));
        late.Ask(1);
        EXPECT_EQ(gates.back()->AwaitBegun(1), std::vector<int>{1});
        // The first two end while the others wait.
        if (i == 2) gates[0]->Open(1);
        if (i == 3) gates[1]->Open(1);
        std::this_thread::sleep_for(20ms);
    }
    for (std::size_t i = 2; i < gates.size(); ++i) gates[i]->Open(1);
    LateFrames late(std::make_unique<SlowReader>(gates[0]));
    late.Ask(2);
    gates[0]->Open(1);
    EXPECT_TRUE(late.Take(5s));
}

TEST(LateFrames, AClipIsLeftWhileItsDiskStandsStill) {
    const auto gate = std::make_shared<Gate>();
    const auto began = std::chrono::steady_clock::now();
    {
        LateFrames late(std::make_unique<SlowReader>(gate));
        late.Ask(LateFrames::kOpen);
        EXPECT_EQ(gate->AwaitBegun(1), std::vector<int>{LateFrames::kOpen});
    }
    EXPECT_LT(std::chrono::steady_clock::now() - began, 2s);
    gate->Open(1);
    // Then it lets go of its file.
    for (int i = 0; i < 250 && gate.use_count() > 1; ++i) std::this_thread::sleep_for(20ms);
    EXPECT_EQ(gate.use_count(), 1);
}

} // namespace tarn::testing
