#include "navigation/ListOrders.h"

#include <gtest/gtest.h>

#include <map>

namespace tarn {
namespace {

using Names = std::vector<std::string>;

int KindOf(std::string_view word) {
    for (std::size_t i = 0; i < SortKinds().size(); ++i)
        if (word == SortKinds()[i].word) return static_cast<int>(i);
    return -1;
}

TEST(NaturalOrder, DigitsCountAsNumbersOfAnyLength) {
    EXPECT_TRUE(NaturalLess("M31_2.fit", "m31_10.fit"));
    EXPECT_TRUE(NaturalLess("a", "a1"));
    EXPECT_TRUE(NaturalLess("a9", "a10"));
    EXPECT_TRUE(NaturalLess("a10b2", "a10b11"));
    EXPECT_FALSE(NaturalLess("a10", "a010")); // equal: the names decide
    EXPECT_FALSE(NaturalLess("a010", "a10"));
    EXPECT_TRUE(NaturalLess("a99999999999999999999998", "a99999999999999999999999"));
    EXPECT_TRUE(NaturalLess("a1z", "a2"));
    EXPECT_TRUE(NaturalLess("a2", "ab"));
}

TEST(ListOrders, EqualKeysStayByNameAndUnknownOnesComeLast) {
    const std::map<std::string, std::int64_t> sizes{{"a", 5}, {"b", 3}, {"d", 5}, {"e", 3}};
    const auto keyOf = [&](const std::string& name) -> std::optional<std::int64_t> {
        const auto at = sizes.find(name);
        return at == sizes.end() ? std::nullopt : std::optional(at->second);
    };
    EXPECT_EQ(Sorted({"a", "b", "c", "d", "e"}, {KindOf("size"), false}, keyOf),
              (Names{"b", "e", "a", "d", "c"}));
    EXPECT_EQ(Sorted({"a10.X", "a2.x", "a3.A", "b"}, {KindOf("type"), true}, keyOf),
              (Names{"b", "a3.A", "a2.x", "a10.X"}));
}

TEST(ListOrders, MarksRiseFromTheBestToTheRejected) {
    const Mark best{Decision::Keep, 5};
    const Mark kept{Decision::Keep, 0};
    const Mark starred{Decision::None, 1};
    const Mark rejected{Decision::Reject, 5};
    EXPECT_LT(SortKeyOf(best), SortKeyOf(kept));
    EXPECT_LT(SortKeyOf(kept), SortKeyOf(starred));
    EXPECT_LT(SortKeyOf(starred), SortKeyOf(Mark()));
    EXPECT_LT(SortKeyOf(Mark()), SortKeyOf(rejected));
}

TEST(ListOrders, MeasuresRiseFromTheBest) {
    JudgedFrame frame;
    const auto key = [&](const char* name) {
        return SortKeyOf(frame, *SortKinds()[std::size_t(KindOf(name))].number);
    };
    EXPECT_EQ(key("hfr"), std::nullopt);
    frame.measures.hfr = 2.01;
    frame.score = 80;
    const auto hfr = key("hfr");
    const auto score = key("score");
    frame.measures.hfr = 2.02;
    frame.score = 81;
    EXPECT_LT(hfr, key("hfr"));
    EXPECT_LT(key("score"), score);
}

TEST(ListOrders, EachFolderKeepsItsOwn) {
    const ListOrder bySize{KindOf("size"), false};
    const ListOrder natural{0, true};
    std::string stored = WithOrder("", "/a:b", bySize);
    stored = WithOrder(stored, "/c", natural);
    EXPECT_EQ(stored, "name,natural:/c//size:/a:b");
    EXPECT_EQ(OrderOfFolder(stored, "/a:b"), bySize);
    EXPECT_EQ(OrderOfFolder(stored, "/c"), natural);
    EXPECT_EQ(OrderOfFolder(stored, "/a"), ListOrder());
    EXPECT_EQ(WithOrder(stored, "/c", ListOrder()), "size:/a:b"); // as all others
    for (int i = 0; i < 300; ++i) stored = WithOrder(stored, "/" + std::to_string(i), bySize);
    EXPECT_EQ(OrderOfFolder(stored, "/299"), bySize);
    EXPECT_EQ(OrderOfFolder(stored, "/100"), bySize);
    EXPECT_EQ(OrderOfFolder(stored, "/99"), ListOrder());             // the oldest have gone
    EXPECT_EQ(OrderOfFolder("by heart:/c//size", "/c"), ListOrder()); // of another version
}

} // namespace
} // namespace tarn
