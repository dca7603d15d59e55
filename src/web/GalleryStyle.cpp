#include "web/Gallery.h"
#include "web/PageText.h"

namespace tarn {

namespace {

struct Look {
    const std::string& page;
    const std::string& text;
    const std::string& border;
    const std::string& thumb;
    std::string fontSize;
    std::string borderStyle;
    std::string borderWidth;
};

Look LookOf(const GallerySettings& s) {
    return {s.HtmlThumbPageBgColor,
            s.HtmlThumbTextColor,
            s.HtmlThumbBorderColor,
            s.HtmlThumbThumbBgColor,
            NumberText(s.HtmlThumbFontsize),
            s.ThumbBorderStyle == 0 ? "ridge" : "solid",
            NumberText(s.HtmlThumbBorderWidth)};
}

void AddLinks(PageText& css, const GallerySettings& s, const Look& look) {
    const std::string& text = look.text;
    const std::string& border = look.border;
    css.Line("body {background-color: #", look.page, "; color: #", text, ";");
    css.Line("      font-size: ", look.fontSize, "pt; font-family: ", s.HtmlThumbFontname,
             ", verdana, arial, sans;}");
    css.Line("a:link, a:visited {color: #", text, ";}");
    css.Line("a:hover.nav {border: 1px solid #", text, "; color: ", border, ";}"); // no "#"
    css.Line("a:hover.navt {border: 1px outset #", text, ";}");
    css.Line("a:hover.navt2 {border: 1px outset #", text, ";}");
    css.Line("td.thumbs:hover {border-color: #", text, ";}");
    css.Line("div.nav {margin: 10px 0 0 0;}");
    css.Line("a.nav {float: left; text-align: center;");
    css.Line("       padding: 2px 5px 2px 5px;  font-size: ", look.fontSize, "pt;");
    css.Line("       text-decoration: none; margin: 0 8px 4px 4px;");
    css.Line("       border: 1px solid #", border, "; border-radius: 7px; display: inline-block;}");
    css.Line(".hide {visibility: hidden; width: 80px; float: left; text-align: center;");
    css.Line("       padding:2px;  font-size: 8pt; margin: 0 8px 4px 4px;");
    css.Line("       border: 1px outset #", text, ";}");
    css.Line(".inactive {width: 80px; float: left; text-align: center;");
    css.Line("       padding:2px;  font-size: 8pt; margin: 0 8px 4px 4px;");
    css.Line("       border: 1px outset #", border, "; color:#", border, ";}");
    css.Line("a.thumbs {text-decoration: none;}");
    css.Line("a.close {font-size: 8pt; text-decoration: none; color: #", text, ";}");
}

void AddNotes(PageText& css) {
    css.Line("div.line1 {margin: 3px 0 3px 0; font-weight: bold;}");
    css.Line("div.notes {margin: 0 100px 0 100px;}");
    css.Line("div.notes2 {margin: 3px 40px 3px 0;}");
    css.Line("td.desc1 {vertical-align: top; padding: 2px 0 0 10px; font-weight: bold;}");
    css.Line("td.desc2 {vertical-align: top; padding: 2px 0 0 10px;}");
    css.Line("td.numof {vertical-align: top; padding: 2px 10px 0 15px; font-weight: normal;}");
    css.Line("td.wheel {vertical-align: top; padding: 2px 10px 0 15px; font-weight: normal; "
             "font-size: 0.75em; color: #888888;}");
}

void AddPanels(PageText& css, const GallerySettings& s, const Look& look) {
    css.Line("div.exif_data { text-align: left;");
    css.Line("                border: 1px ", look.borderStyle, ";");
    css.Line("                background-color: #", look.page, ";");
    css.Line("                border-color: #", look.border, ";");
    css.Line("                padding: 0px 30px 0px 20px; margin: 8px 2px 0px 2px;}");
    if (s.ThumbTitleBorder != 0) {
        css.Line("div.exif_title { border: ", look.borderWidth, "px ", look.borderStyle, "; ");
        css.Line("                 background-color: #", look.page, ";");
        css.Line("                 border-color: #", look.border, ";");
    } else {
        css.Line("div.exif_title { border: 0px; ");
        css.Line("                 background-color: #", look.page, ";");
    }
    css.Line("                 padding: 5px; margin: 5px;}");
}

void AddButtons(PageText& css, const GallerySettings& s, const Look& look) {
    const std::string button = "        border: 1px solid #" + look.border +
                               "; border-radius: 7px; display: inline-block;}";
    css.Line("div.navt {margin-left: 10px;}");
    css.Line("a.navt {display: block; text-align: center;");
    css.Line("        padding: 2px 5px 2px 5px; font-size: 8pt; cursor: pointer;");
    css.Line("        text-decoration: none; margin: 0px;");
    css.Line(button);
    css.Line("a.navt2 {width: 50px;  display: block; text-align: center;");
    css.Line("        padding: 1px 0px 2px 1px; font-size: 8pt; cursor: pointer;");
    css.Line("        text-decoration: none; margin: 6px 0 0 0;");
    css.Line(button);
    css.Line("div.date {text-align: left; margin: 0 0 5px 20px; font-size: smaller; color: #",
             look.text, "; float: left;}");
    css.Line("div.email {text-align: right; margin-right: 20px; font-size: smaller; color: #",
             look.text, ";}");
    // Keeps the title in the middle beside the buttons.
    const bool besideButtons = s.HtmlThumbHomeLink != 0 || s.ThumbFileLink != 0;
    css.Line("td.title {text-align: center; font-weight: bold; font-size: larger;",
             besideButtons ? " padding: 0 75px 0 0;" : "", "}");
    css.Line("td.home {text-align: left; font-size: 8pt; padding: 0 0 0 15px; width: 80px;}");
}

void AddCell(PageText& css, std::string_view selector, const std::string& edge,
             const GallerySettings& s, const Look& look) {
    css.Line(selector,
             " {font-size: smaller; border: ", s.ThumbTnailBorder != 0 ? look.borderWidth : "0",
             "px ", look.borderStyle, "; padding: ", NumberText(s.ThumbPadding), "px;");
    css.Line("            border-color: #", edge, ";");
    css.Line("            vertical-align:middle; text-align:center;");
    css.Line("            background-color: #", look.thumb, ";}");
}

void AddPictures(PageText& css, const GallerySettings& s, const Look& look) {
    css.Line("img.thumbs {border: none; margin: 0px 0px 3px 0px;}");
    css.Line("img.exif_slide { border: ", s.ThumbImageBorder != 0 ? look.borderWidth : "0", "px ",
             look.borderStyle, ";");
    css.Line("                 background-color: #", look.page, ";");
    css.Line("                 border-color: #", look.border, ";");
    css.Line("                 padding: 0px;}");
    if (s.ThumbNoLinkPic == 0) css.Line("img.exif_slide:hover {border-color: #", look.text, ";}");
    css.Line("td.notes {font-weight: normal;");
    css.Line("          vertical-align: top; text-align: left; padding: 3px 8px 3px 5px;}");
    css.Line("li.plain {margin: 3px; list-style-type: none;}");
    css.Line("img.bg_full {max-width: 100%; max-height: 100%; width: auto; height: auto;");
    css.Line("             margin: auto; display: block;");
    css.Line("             position: absolute; top: 0; left: 0; z-index: -1;}");
    css.Line("img.bg_full2 {max-width: 100%; max-height: 92%; width: auto; height: auto;");
    css.Line("             margin: auto; display: block;");
    css.Line("             position: absolute; top: 40px; left: 5; z-index: -1;}");
    css.Line("img.bg_full3 {max-width: 100%; max-height: 100%; width: auto; height: auto;");
    css.Line("             margin: 0 auto; display: block;}"); // closed here; the next is stray
    css.Line("             position: absolute; left: 0; z-index: -1;}");
}

} // namespace

std::string GalleryStyle(const GallerySettings& s) {
    const Look look = LookOf(s);
    PageText css;
    AddLinks(css, s, look);
    AddNotes(css);
    AddPanels(css, s, look);
    AddButtons(css, s, look);
    AddCell(css, "td.thumbs", look.border, s, look);
    AddCell(css, "td.thumbs_cur", look.text, s, look);
    AddPictures(css, s, look);
    return css.Bytes();
}

} // namespace tarn
