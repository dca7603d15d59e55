#include "navigation/FindTerms.h"

#include "common/text.h"

#include <gtest/gtest.h>

namespace tarn {
namespace {

JudgedFrame Frame(double hfr, int stars, const char* filter, const char* exposure) {
    JudgedFrame frame;
    frame.isMeasured = true;
    frame.measures.background = 100;
    frame.measures.hfr = hfr;
    frame.measures.stars = stars;
    frame.filter = filter;
    frame.exposure = exposure;
    return frame;
}

TEST(FindTerms, EachTermMustHold) {
    const JudgedFrame blurred = Frame(3.4, 120, "Ha", "300");
    const Mark rejected{Decision::Reject, 2};
    const std::string text = FoldCase("m31_001.fits");
    const FoundFile file{text, &blurred, rejected};
    for (const char* typed :
         {"hfr>3 filter:Ha stars<200 reject", "hfr>=3.4", "hfr=3.4", "HFR<4 m31_001", "filter:HA",
          "exposure=300", "rating>=2", "rating<=2 mark:reject", "m31", "stars=120 .fits"})
        EXPECT_TRUE(FindTerms(typed).Takes(file)) << typed;
    for (const char* typed : {"hfr>3.4", "hfr>3 filter:OIII", "stars<100", "keep", "rating>2",
                              "mark:none", "score>0", "hfr<4 m33", "exposure<300"})
        EXPECT_FALSE(FindTerms(typed).Takes(file)) << typed;
}

TEST(FindTerms, WhatIsNotMeasuredIsFoundByNoMeasure) {
    const FoundFile file{"m31.fits", nullptr, {}};
    EXPECT_FALSE(FindTerms("hfr<100").Takes(file));
    EXPECT_FALSE(FindTerms("filter:").Takes(file));
    EXPECT_TRUE(FindTerms("mark:none").Takes(file));
    EXPECT_TRUE(FindTerms("stars>1").NeedsMeasures());
    EXPECT_FALSE(FindTerms("rating>1 keep").NeedsMeasures());
}

TEST(FindTerms, AllElseIsOneText) {
    const std::string text = FoldCase("a.jpg\nclear night, a>b, keep the second");
    const FoundFile note{text, nullptr, {}};
    for (const char* typed : {"clear night", "r n", "a>b", "NIGHT", "the  ", "keep", "night, "})
        EXPECT_EQ(FindTerms(typed).Takes(note), std::string(typed) != "the  ") << typed;
    EXPECT_FALSE(FindTerms("clear second").Takes(note));
    EXPECT_FALSE(FindTerms("mark:keep").Takes(note));
    EXPECT_TRUE(FindTerms("rating=0 clear night").Takes(note));
    EXPECT_TRUE(FindTerms("a>b, keep the second").Takes(note)); // as it stands there
    EXPECT_TRUE(FindTerms("").IsEmpty());
}

} // namespace
} // namespace tarn
