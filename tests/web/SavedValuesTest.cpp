#include "web/SavedValues.h"
#include "web/HtmlColor.h"
#include "web/PageHead.h"

#include "web/Gallery.h"

#include <gtest/gtest.h>

#include <random>

using namespace tarn;

namespace {

template <class Settings> std::string BlockOf(const Settings& settings) {
    PageText text;
    AddSavedValues(text, InPageBytes(settings));
    return text.Bytes();
}

// A text that is allowed.
std::string Sample(SavedGrammar::Kind kind, const std::string& number) {
    using Kind = SavedGrammar::Kind;
    switch (kind) {
    case Kind::Color:
        return "00BF" + (number + "0").substr(0, 2);
    case Kind::Font:
        return "Fira Sans-" + number + ", M\xC3\xA9ssier";
    case Kind::Link:
        return "../a b/index" + number + ".html?x=1&y=2#top";
    case Kind::Mail:
        return "m" + number + "@example.org";
    case Kind::NamePart:
        return "_Caption (" + number + ")";
    case Kind::Digits:
        return number;
    case Kind::Boxes:
        return "01" + std::string(3, number[0] % 2 == 0 ? '0' : '1');
    default:
        return "M\xC3\xA9ssier <b>" + number + "</B> < 5 <3 -- & \"N\"";
    }
}

// Every field by its kind.
template <class Settings, class Table> Settings Random(const Table& table, std::mt19937& random) {
    Settings settings;
    const auto number = [&](int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random);
    };
    for (const auto& value : table) {
        if (const auto* flag = std::get_if<bool Settings::*>(&value.field))
            settings.** flag = number(0, 1) > 0;
        else if (const auto* whole = std::get_if<int Settings::*>(&value.field))
            settings.** whole = number(value.grammar.least, value.grammar.most);
        else
            settings.*std::get<std::string Settings::*>(value.field) =
                Sample(value.grammar.kind, std::to_string(number(0, 99)));
    }
    return settings;
}

// A page whose block has another text in place of one value.
template <class Settings>
std::string PageWith(const std::vector<SavedValue<Settings>>& table, std::string_view name,
                     const std::string& text) {
    const std::string block = BlockOf(Settings());
    std::string page = std::is_same_v<Settings, HtmlSettings> ? "<!--TarnView saved settings\r\n"
                                                              : "<!--TarnView v1\r\n";
    std::size_t at = 0;
    for (const auto& value : table) {
        const std::size_t end = block.find('\n', at) + 1;
        page += value.name == name ? text + "\r\n" : block.substr(at, end - at);
        at = end;
    }
    return page + "-->\r\n";
}

} // namespace

TEST(SavedValues, ReadBackWhatWasWritten) {
    std::mt19937 random(7);
    for (int i = 0; i < 50; ++i) {
        const auto page = Random<HtmlSettings>(PageValues(), random);
        HtmlSettings pageRead;
        ASSERT_TRUE(ReadSavedValues(PageHead(InPageBytes(page), "v1", "now"), pageRead));
        EXPECT_EQ(BlockOf(pageRead), BlockOf(page));

        const auto gallery = Random<GallerySettings>(GalleryValues(), random);
        GallerySettings galleryRead;
        ASSERT_TRUE(ReadSavedValues(GalleryIndexHead(InPageBytes(gallery), {}), galleryRead));
        EXPECT_EQ(BlockOf(galleryRead), BlockOf(gallery));
    }
}

TEST(SavedValues, AreInPageBytesAndKeepTheirSign) {
    HtmlSettings page;
    page.HtmlTitle = "Stra\xC3\x9F"
                     "e \xE2\x82\xAC \xCE\xB1";
    EXPECT_NE(BlockOf(page).find("Stra\xDF"
                                 "e \x80 ?\r\n"),
              std::string::npos);
    GallerySettings gallery;
    gallery.HtmlThumbSlider = -3;
    EXPECT_TRUE(BlockOf(gallery).starts_with("Pictures\r\n-3 \r\n 1 \r\n"));
}

TEST(SavedValues, StopAtTheEndOfTheBlockAndKeepTheRest) {
    HtmlSettings settings;
    const std::string head = PageHead(InPageBytes(settings), "v1", "now");
    // Cut behind each line: what was read stays, nothing else changes.
    HtmlSettings changed = settings;
    changed.HtmlTitle = "Other";
    changed.HtmlBorder = 9;
    changed.HtmlMp4Video = 1;
    const std::string other = PageHead(InPageBytes(changed), "v1", "now");
    std::size_t lines = 0;
    for (std::size_t end = other.find('\n'); lines < 34; end = other.find('\n', end + 1), ++lines) {
        HtmlSettings read;
        const bool found = ReadSavedValues(other.substr(0, end + 1), read);
        EXPECT_EQ(found, lines >= 1) << lines;
        EXPECT_EQ(read.HtmlBorder, lines >= 9 ? 9 : 1) << lines;
        EXPECT_EQ(read.HtmlTitle, lines >= 13 ? "Other" : "Pictures") << lines;
        EXPECT_EQ(read.HtmlMp4Video, lines >= 33 ? 1 : 0) << lines;
    }
    // A block that ended after value 12.
    const std::string title = "Other\r\n";
    const std::string old = other.substr(0, other.find(title) + title.size()) + "-->\r\n\r\n<html>";
    HtmlSettings read;
    read.HtmlTextColor = "123456";
    EXPECT_TRUE(ReadSavedValues(old, read));
    EXPECT_EQ(read.HtmlTitle, "Other");
    EXPECT_EQ(read.HtmlTextColor, "123456");
}

TEST(SavedValues, OfAForeignPagePlantNothing) {
    const std::string kScript = "<script src=//x></script>";
    const std::vector<std::pair<std::string_view, std::vector<std::string>>> planted = {
        {"html_title",
         {kScript, "</title>" + kScript, "<b onclick=x>M31</b>", "<img src=x onerror=x", "a<b",
          "-->", "--!><p>", "<!--", "<b\tid=x>", "M31\x01", "<<b>script>"}},
        {"html_home_text", {kScript, "<a href=x>"}},
        {"html_page_bg_color", {"0000", "0000000", "000\"><", "00 000", "red;}", ""}},
        {"html_text_color", {"000000\" onload=\"x", "-00000"}},
        {"html_fontname", {"x;} body {background: url(x)", "</style>", "\"A\"", "A--B", "A/*"}},
        {"html_home_page",
         {"javascript:x", "JavaScript:x", " javascript:x", "java&#115;cript:x",
          "javascript&colon;x", "data:text/html,x", "vbscript:x", "a\" onclick=\"x", "a'b", "a--b",
          "\x01javascript:x"}},
        {"html_email", {"a@b\" onclick=\"x", "a@b?bcc=c", "<a@b>", "a--b@c"}},
        {"html_text_image_label", {"\"><script>", "/../x", "a--b"}},
        {"html_picture_type", {" 0 ", " 5 ", "-1 "}},
        {"html_border", {"-1 ", " 32768 "}}};
    for (const auto& [name, texts] : planted)
        for (const std::string& text : texts) {
            SCOPED_TRACE(std::string(name) + " = " + text);
            HtmlSettings read;
            read.HtmlMp4Video = 1; // what comes behind is taken
            EXPECT_TRUE(ReadSavedValues(PageWith(PageValues(), name, text), read));
            EXPECT_EQ(BlockOf(read), BlockOf(HtmlSettings()));
        }
    const std::vector<std::pair<std::string_view, std::vector<std::string>>> inIndex = {
        {"html_thumb_title", {kScript}},
        {"html_thumb_home_url", {"javascript:x"}},
        {"ThumbFileLinkURL", {"javascript:x"}},
        {"ThumbFileLinkButtonText", {kScript}},
        {"html_thumb_border_color", {"\"><script>"}},
        {"html_thumb_cs_value", {"600px", "1234567890"}},
        {"NotesLineBottomCheck", {"0000", "00002", "<b>00"}},
        {"html_thumb_slider", {" 0 ", "-3 "}},
        {"ThumbBorderStyle", {" 2 "}},
        {"ThumbImagePos", {" 3 "}}};
    for (const auto& [name, texts] : inIndex)
        for (const std::string& text : texts) {
            SCOPED_TRACE(std::string(name) + " = " + text);
            GallerySettings read;
            EXPECT_TRUE(ReadSavedValues(PageWith(GalleryValues(), name, text), read));
            EXPECT_EQ(BlockOf(read), BlockOf(GallerySettings()));
        }
}

TEST(SavedValues, TellTheKindsOfPagesApart) {
    HtmlSettings page;
    GallerySettings gallery;
    const std::string aPage = PageHead(InPageBytes(page), "v1", "now");
    GalleryRunFacts run;
    run.version = "v1";
    const std::string anIndex = GalleryIndexHead(InPageBytes(gallery), run);
    EXPECT_FALSE(ReadSavedValues(aPage, gallery));
    EXPECT_FALSE(ReadSavedValues(anIndex, page));
    EXPECT_FALSE(ReadSavedValues("<html>\r\n<!--Tarn", page));
    EXPECT_FALSE(ReadSavedValues("", gallery));
}

TEST(SavedValues, AreSetByName) {
    GallerySettings gallery;
    EXPECT_TRUE(SetSavedValue(gallery, "html_thumb_slider", "4"));
    EXPECT_TRUE(SetSavedValue(gallery, "html_thumb_notes_top", "True"));
    EXPECT_TRUE(SetSavedValue(gallery, "ThumbFileLinkURL", "a.html"));
    EXPECT_FALSE(SetSavedValue(gallery, "html_thumb_slider", "four"));
    EXPECT_FALSE(SetSavedValue(gallery, "html_title", "x"));
    EXPECT_FALSE(SetSavedValue(gallery, "ThumbFileLinkURL", "b\r-->"));
    EXPECT_FALSE(SetSavedValue(gallery, "ThumbFileLinkURL", "b\n-->"));
    EXPECT_EQ(gallery.HtmlThumbSlider, 4);
    EXPECT_TRUE(gallery.HtmlThumbNotesTop);
    EXPECT_EQ(gallery.ThumbFileLinkURL, "a.html");
}

TEST(HtmlColors, ComeOutWithTheirOddLengths) {
    EXPECT_EQ(HtmlColorOf(0xFFBF00), "00BFFF");
    EXPECT_EQ(HtmlColorOf(0), "000000");
    EXPECT_EQ(HtmlColorOf(0xC8), "C80000");
    EXPECT_EQ(HtmlColorOf(4095), "FFF00");
    EXPECT_EQ(HtmlColorOf(0x1234), "341200");
    EXPECT_EQ(HtmlColorOf(0x12345), "53412");
    EXPECT_EQ(NumberOfHtmlColor("53412"), 0x24153);
    EXPECT_EQ(NumberOfHtmlColor("00BFFF"), 0xFFBF00);
    EXPECT_EQ(NumberOfHtmlColor("EEEEEE"), 0xEEEEEE);
    EXPECT_EQ(NumberOfHtmlColor("no"), 0);
    EXPECT_EQ(NumberOfHtmlColor(""), 0);
}
