// Marks that no sidecar could take go along with their pictures.
#include "fileops/MarksAlong.h"

#include "support/RecordingRooms.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

using Kind = Done::Kind;
using Wishes = std::map<std::string, MarkChange>;

struct AsideMarks : RecordingMarks {
    Wishes wishes;
    explicit AsideMarks(Calls& record) : RecordingMarks(record) {
        kept = {{"/a", Rate(3)}, {"/b", Decide(Decision::Keep)}};
        marks = {{"/a", {Decision::None, 3}}, {"/b", {Decision::Keep, 0}}};
    }
    void SetMarks(const std::vector<MarkWish>& all) override {
        for (const MarkWish& each : all) wishes[each.path] = each.change;
    }
};

std::map<std::string, Mark> ByPath(const std::vector<MarkBefore>& all) {
    std::map<std::string, Mark> marks;
    for (const MarkBefore& each : all) marks[each.path] = each.mark;
    return marks;
}

TEST(MarksAlong, GoWhereThePicturesGo) {
    Calls record;
    AsideMarks marks(record);
    const auto before =
        TakeMarksAlong(marks, {{Kind::Renamed, "/a", "/new"}, {Kind::Renamed, "/c", "/d"}});
    EXPECT_EQ(marks.wishes, (Wishes{{"/a", {}}, {"/new", Rate(3)}}));
    EXPECT_EQ(ByPath(before),
              (std::map<std::string, Mark>{{"/a", {Decision::None, 3}}, {"/new", {}}}));
}

TEST(MarksAlong, ChangePlacesOverOneBetween) {
    Calls record;
    AsideMarks marks(record);
    const auto before = TakeMarksAlong(marks, {{Kind::Renamed, "/a", "/between"},
                                               {Kind::Renamed, "/b", "/a"},
                                               {Kind::Renamed, "/between", "/b"}});
    EXPECT_EQ(marks.wishes,
              (Wishes{{"/a", Decide(Decision::Keep)}, {"/b", Rate(3)}, {"/between", {}}}));
    EXPECT_EQ(ByPath(before), (std::map<std::string, Mark>{{"/a", {Decision::None, 3}},
                                                           {"/b", {Decision::Keep, 0}}}));
}

TEST(MarksAlong, OfACopyBothHaveItAndOfWhatIsThrownAwayNone) {
    Calls record;
    AsideMarks marks(record);
    EXPECT_EQ(ByPath(TakeMarksAlong(marks, {{Kind::Made, "/a", "/copy"}})),
              (std::map<std::string, Mark>{{"/copy", {}}}));
    EXPECT_EQ(marks.wishes, (Wishes{{"/copy", Rate(3)}}));
    marks.wishes.clear();
    // What stood at the copy's place has gone first.
    const auto before =
        TakeMarksAlong(marks, {{Kind::ThrownAway, "/b", "/basket/b"}, {Kind::Made, "/c", "/b"}});
    EXPECT_EQ(marks.wishes, (Wishes{{"/b", {}}}));
    EXPECT_EQ(ByPath(before), (std::map<std::string, Mark>{{"/b", {Decision::Keep, 0}}}));
}

} // namespace
} // namespace tarn::testing
