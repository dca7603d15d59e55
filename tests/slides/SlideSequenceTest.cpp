#include "slides/SlideSequence.h"

#include "common/keys.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarn {
namespace {

// Indexes after each key in a walk of `count`, from `start`.
std::vector<int> Walk(int count, int start, const std::vector<int>& keycodes, bool alternate) {
    SlideSequence walk(count, start);
    std::vector<int> indexes;
    for (const int key : keycodes) {
        const SlideEffect effect = FullEffectOf(key, alternate);
        walk.Shown();
        if (effect.action == SlideAction::Move)
            walk.Leave(static_cast<SlideMove>(effect.amount), SkipsBack(key));
        indexes.push_back(walk.Index());
    }
    return indexes;
}

using Indexes = std::vector<int>;

TEST(SlideSequence, KeysGoRoundAtBothEnds) {
    using namespace keys;
    EXPECT_EQ(Walk(3, 0, {kUp, kDown, 'P', 'N', kSpace, 'O'}, false), (Indexes{2, 0, 2, 0, 1, 1}));
    EXPECT_EQ(Walk(3, 0, {kLeft, kRight, kRight, kUp, kDown}, true), (Indexes{2, 0, 1, 1, 1}));
    EXPECT_EQ(Walk(3, 1, {kLeft, kRight}, false), (Indexes{1, 1})); // they turn
    EXPECT_EQ(Walk(12, 7, {kHome, kEnd, kDown}, false), (Indexes{0, 11, 0}));
    EXPECT_EQ(Walk(12, 6, {kPageUp, kPageUp, kPageDown}, false), (Indexes{1, 8, 1}));
    EXPECT_EQ(Walk(2, 1, {kPageDown, kPageUp, kPageUp, kUp}, false), (Indexes{0, 1, 0, 1}));
    EXPECT_EQ(Walk(1, 0, {kDown, kUp, kEnd, kPageUp}, false), (Indexes{0, 0, 0, 0}));
}

TEST(SlideSequence, PassesOverInTheDirectionOfTheLastKey) {
    SlideSequence walk(5, 2);
    walk.Shown();
    walk.Leave(SlideMove::Previous, SkipsBack('P'));
    EXPECT_EQ(walk.Index(), 1);
    EXPECT_TRUE(walk.PassOver());
    EXPECT_TRUE(walk.PassOver());
    EXPECT_EQ(walk.Index(), 4);
    walk.Shown();
    walk.Leave(SlideMove::Next, false);
    EXPECT_TRUE(walk.PassOver());
    EXPECT_EQ(walk.Index(), 1);
    EXPECT_FALSE(SkipsBack(keys::kLeft)); // whatever the layout
}

TEST(SlideSequence, AWholePassWithoutAPictureIsTheEnd) {
    SlideSequence walk(3, 1);
    EXPECT_TRUE(walk.PassOver());
    EXPECT_TRUE(walk.PassOver());
    EXPECT_FALSE(walk.PassOver());
    EXPECT_EQ(walk.Index(), 1);
    SlideSequence emptied(3, 1); // later, by another program
    emptied.PassOver();
    emptied.Shown();
    emptied.Leave(SlideMove::Next, false);
    EXPECT_TRUE(emptied.PassOver());
    EXPECT_TRUE(emptied.PassOver());
    EXPECT_FALSE(emptied.PassOver());
}

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
