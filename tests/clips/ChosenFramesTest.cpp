// Chosen frames of a clip, and what is told on the way to them.
#include "ClipFiles.h"

#include "clips/ClipFrames.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarn::testing {

TEST(ChosenFrames, OfAnAviComeInItsOrderAndThoseBetweenAreTold) {
    TestFolder folder;
    const std::string path = folder.Path() + "/a.avi";
    ASSERT_TRUE(MakeClip(path, 8, "-c:v mjpeg"));
    std::vector<std::string> told;
    std::size_t most = 100;
    const auto walk = [&] {
        told.clear();
        return WalkFrames(
                   path, {5, 2},
                   [&](std::size_t place, const ClipImage&) {
                       told.push_back("place " + std::to_string(place));
                       return true;
                   },
                   [&] {
                       told.emplace_back("passed");
                       return told.size() < most;
                   })
            .fault;
    };
    EXPECT_EQ(walk(), "");
    EXPECT_EQ(told, (std::vector<std::string>{"passed", "passed", "place 1", "passed", "passed",
                                              "place 0"}));
    most = 4; // ended between two of them
    EXPECT_EQ(walk(), "");
    EXPECT_EQ(told, (std::vector<std::string>{"passed", "passed", "place 1", "passed"}));
}

} // namespace tarn::testing
