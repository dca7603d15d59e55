// Marks that no sidecar could take go along with their pictures.
#include "fileops/MarksAlong.h"

#include "support/RecordingRooms.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

using Wishes = std::map<std::string, std::optional<MarkChange>>;
using Marks = std::map<std::string, Mark>;

struct AsideMarks : RecordingMarks {
    explicit AsideMarks(Calls& record) : RecordingMarks(record) {
        kept = {{"/a", Rate(3)}, {"/b", Decide(Decision::Keep)}};
        marks = {{"/a", {Decision::None, 3}}, {"/b", {Decision::Keep, 0}}};
    }
};

struct Moves {
    Wishes kept;
    Marks before; // but none
    explicit Moves(const std::vector<Step>& done) {
        Calls record;
        AsideMarks marks(record);
        for (const MarkMove& move : MarkMoves(marks, done)) {
            kept[move.path] = move.kept;
            if (move.before != Mark()) before[move.path] = move.before;
        }
    }
};

Step Moved(StepKind kind, const char* from, const char* to) {
    Step step;
    step.kind = kind;
    step.from = from;
    step.to = to;
    return step;
}

TEST(MarksAlong, GoWhereThePicturesGo) {
    const Moves moves(
        {Moved(StepKind::Renamed, "/a", "/new"), Moved(StepKind::Renamed, "/c", "/d")});
    EXPECT_EQ(moves.kept, (Wishes{{"/a", {}}, {"/new", Rate(3)}}));
    EXPECT_EQ(moves.before, (Marks{{"/a", {Decision::None, 3}}}));
}

TEST(MarksAlong, ChangePlacesOverOneBetween) {
    const Moves moves({Moved(StepKind::Renamed, "/a", "/between"),
                       Moved(StepKind::Renamed, "/b", "/a"),
                       Moved(StepKind::Renamed, "/between", "/b")});
    EXPECT_EQ(moves.kept,
              (Wishes{{"/a", Decide(Decision::Keep)}, {"/b", Rate(3)}, {"/between", {}}}));
    EXPECT_EQ(moves.before, (Marks{{"/a", {Decision::None, 3}}, {"/b", {Decision::Keep, 0}}}));
}

TEST(MarksAlong, OfACopyBothHaveItAndOfWhatIsThrownAwayNone) {
    const Moves copied({Moved(StepKind::Made, "/a", "/copy")});
    EXPECT_EQ(copied.kept, (Wishes{{"/copy", Rate(3)}}));
    EXPECT_EQ(copied.before, Marks());
    // What stood at the copy's place has gone first.
    const Moves over(
        {Moved(StepKind::ThrownAway, "/b", "/basket/b"), Moved(StepKind::Made, "/c", "/b")});
    EXPECT_EQ(over.kept, (Wishes{{"/b", {}}}));
    EXPECT_EQ(over.before, (Marks{{"/b", {Decision::Keep, 0}}}));
}

} // namespace
} // namespace tarn::testing
