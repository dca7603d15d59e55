#include "slides/SlideSequence.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarn {
namespace {

using Indexes = std::vector<int>;

TEST(SlideSequence, OnceMoreIsOneStepAndNoLoweredIndex) {
    SlideSequence walk(4, 0);
    walk.ShowAgain();
    walk.Leave(SlideMove::Again, false); // the slider asks for the picture anew
    walk.Leave(SlideMove::Next, false);
    EXPECT_EQ(walk.Index(), 0);
    walk.Leave(SlideMove::Next, false);
    EXPECT_EQ(walk.Index(), 1);
    walk.ShowAgain();
    walk.Leave(SlideMove::Previous, true);
    EXPECT_EQ(walk.Index(), 1);
    walk.ShowAgain();
    walk.Leave(SlideMove::Last, false);
    EXPECT_EQ(walk.Index(), 3);
    walk.Leave(SlideMove::Next, false);
    EXPECT_EQ(walk.Index(), 0);
}

TEST(SlideSequence, TheNextEntryTakesThePlaceOfOneThatWent) {
    SlideSequence walk(3, 1);
    EXPECT_TRUE(walk.Resize(2));
    EXPECT_EQ(walk.Index(), 1);
    EXPECT_TRUE(walk.Resize(1));
    EXPECT_EQ(walk.Index(), 0);
    EXPECT_TRUE(walk.IsLast());
    EXPECT_FALSE(walk.Resize(0));
}

TEST(SlideSequence, TwoAheadAndOneBehindAreMadeReady) {
    SlideSequence walk(9, 8);
    EXPECT_EQ(walk.Expected(), (Indexes{0, 1, 7}));
    walk.Leave(SlideMove::Previous, true);
    EXPECT_EQ(walk.Expected(), (Indexes{6, 5, 8}));
    EXPECT_EQ(SlideSequence(2, 0).Expected(), (Indexes{1}));
    EXPECT_EQ(SlideSequence(1, 0).Expected(), (Indexes{}));
}

} // namespace
} // namespace tarn
