#include "common/codepage.h"

#include <gtest/gtest.h>

using namespace tarn;

TEST(CodePage, AllBytesGoBothWays) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    EXPECT_EQ(ToCodePage(FromCodePage(all)), all);
}

TEST(CodePage, CharactersOfBothHalves) {
    EXPECT_EQ(FromCodePage("caf\xE9 5\x80 \x93q\x94"), "café 5€ “q”");
    EXPECT_EQ(ToCodePage("Ÿ ž ¿"), "\x9F \x9E \xBF");
}

TEST(CodePage, NamesTheFirstMisfit) {
    std::string misfit;
    EXPECT_EQ(ToCodePage("a→b€→", &misfit), std::nullopt);
    EXPECT_EQ(misfit, "→");
    EXPECT_EQ(ToCodePage("a\xE9", &misfit), std::nullopt); // no valid UTF-8
    EXPECT_EQ(misfit, "\xE9");
    EXPECT_EQ(ToCodePage("\xC4\x80"), std::nullopt); // no narrowing of U+0100 to 0
}
