#include "common/text.h"

#include <gtest/gtest.h>

using namespace tarn;

TEST(Text, ColumnsCountCharacters) {
    EXPECT_EQ(pad("Zoë", 5), "Zoë  ");
    EXPECT_EQ(pad("Zoë!", 3), "Zoë");
    EXPECT_EQ(pad("abc", 0), "");
    EXPECT_EQ(pad("abc", -1), "");
    EXPECT_EQ(Length("Zoë→\xF0\x9F\x98\x80"), 5);
}

TEST(Text, BadBytesAreOneCharacterEach) {
    EXPECT_EQ(Length("\xFF\xC3"), 2);     // a lead byte without its tail
    EXPECT_EQ(Length("\xC0\x80"), 2);     // overlong
    EXPECT_EQ(Length("\xED\xA0\x80"), 3); // half a surrogate pair
    EXPECT_EQ(LeftChars("\xC3"
                        "ab",
                        2),
              "\xC3"
              "a");
    EXPECT_EQ(ToUpper("\xFF"
                      "a"),
              "\xFF"
              "A");
}

TEST(Text, PartsByPosition) {
    EXPECT_EQ(LeftChars("Zoë", 9), "Zoë");
    EXPECT_EQ(LeftChars("Zoë", -1), "");
    EXPECT_EQ(RightChars("Zoë", 1), "ë");
    EXPECT_EQ(RightChars("Zoë", 4), "Zoë");
    EXPECT_EQ(RightChars("Zoë", 0), "");
    EXPECT_EQ(MidChars("aëiou", 2, 2), "ëi");
    EXPECT_EQ(MidChars("aëiou", 5, 9), "u");
    EXPECT_EQ(MidChars("aëiou", 6, 1), "");
}

TEST(Text, TrimTakesBlanksOnly) {
    EXPECT_EQ(Trim("  a b "), "a b");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim("\ta "), "\ta");
}

TEST(Text, SplitKeepsEmptyParts) {
    EXPECT_EQ(Split("", ' '), std::vector<std::string>{""});
    EXPECT_EQ(Split(" a ", ' '), (std::vector<std::string>{"", "a", ""}));
}

TEST(Text, CapitalsAndFolding) {
    EXPECT_EQ(ToUpper("äöü ÿ ž ő ß ÷ αάς яёђ ḁ →"), "ÄÖÜ Ÿ Ž Ő ß ÷ ΑΆΣ ЯЁЂ Ḁ →");
    EXPECT_EQ(FoldCase("IMG_ÉTÉ.jpg"), FoldCase("img_été.JPG"));
    EXPECT_NE(FoldCase("ı"), FoldCase("i"));
}
