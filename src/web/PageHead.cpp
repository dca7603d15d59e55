#include "web/PageHead.h"

#include "common/paths.h"
#include "web/PageText.h"
#include "web/SavedValues.h"

namespace tarn {

namespace {

constexpr long long kCloseReach = 20; // how far before its end a page is written over
constexpr int kNotesToRight = 4;      // the page format

std::string Number(int value) {
    return std::to_string(value);
}

void AddStyle(PageText& page, const HtmlSettings& s) {
    const std::string& text = s.HtmlTextColor;
    const std::string& border = s.HtmlBorderColor;
    const std::string_view align = s.HtmlPicCenter ? "center" : "left";
    const bool toRight = s.HtmlPictureType == kNotesToRight;
    const std::string_view side = toRight ? "10" : "0";

    page.Line(" <style>");
    page.Line("  body {font-family: ", s.HtmlFontname,
              ", verdana, arial, sans; font-size: ", Number(s.HtmlFontsize), "pt;}");
    page.Line("  table {padding: 0px 0px 0px 0px;}  ");
    page.Line("  a {text-decoration: none;}");
    page.Line("  a.navt {display: block; text-align: center;");
    page.Line("     padding: 0px 5px 0px 5px; font-size: 8pt; cursor: pointer;");
    page.Line("     text-decoration: none; margin: 0px;");
    page.Line("     border: 1px solid #", border, ";");
    page.Line("     border-radius: 7px; display: inline-block;}");
    page.Line("  td.ct {text-align: ", align,
              "; vertical-align: top; padding: 4px 20px 0px 20px; color: #", text, ";}");
    page.Line("  p.tx {padding: 0; margin: 0px 5px 0px 5px;}");
    page.Line("  td.lt {text-align: left; vertical-align: top;}");
    page.Line("  div.exif_title { border: ", Number(s.HtmlTitleBorderWidth), "px ridge;");
    page.Line("     background-color: #", s.HtmlTitleBgColor, ";");
    page.Line("     border-color: #", border, ";");
    page.Line("     padding: 5px; margin: 5px;}");
    page.Line("  div.date {text-align: left; margin-left: 20px; margin-bottom: 5px; font-size: "
              "smaller; color: #",
              text, "; float: left;}");
    page.Line("  div.buttons {text-align: right; margin-right: 20px; font-size: smaller; color: #",
              text, "; float: right;}");
    page.Line("  img {border: ", Number(s.HtmlBorder), "px ridge #", border, "}");
    page.Line("  img:hover {border: ", Number(s.HtmlBorder), "px ridge #", text, "}");
    page.Line("  p.line {border-bottom-style: solid; border-bottom-width: ",
              Number(s.HtmlLineWidth), "px; ");
    page.Line("          padding:0px; margin: ", toRight ? "20" : "15", "px ", side, "px 15px ",
              side, "px;");
    page.Line("          border-bottom-color: #", border, ";}");
    page.Line("  p.labels {font-style: italic; font-size: smaller; color: #", text, ";}");
    page.Line(" </style>");
}

// A page with zoom has two body tags; browsers take the attributes of both.
void AddBodyTag(PageText& page, const HtmlSettings& s) {
    const std::string tag = "<body bgcolor=\"#" + s.HtmlPageBgColor + "\" link=\"#" +
                            s.HtmlTextColor + "\" alink=\"#" + s.HtmlBorderColor + "\" vlink=\"#" +
                            s.HtmlTextColor;
    if (s.HtmlZoomPan == 0) {
        page.Line(tag, "\">");
        return;
    }
    page.Line(tag, "\"; onload = \"; zoomload(); \" > ");
    page.Line();
    AddZoomLines(page);
}

} // namespace

std::string PageHead(const HtmlSettings& s, std::string_view version, std::string_view now) {
    PageText page;
    page.Line(kDocumentType);
    page.Line("<!--TarnView saved settings");
    AddSavedValues(page, s);
    page.Line("-->");
    page.Line();
    AddHeadLines(page, version);
    page.Line(" <title>", s.HtmlTitle, "</title>");
    AddStyle(page, s);
    page.Line("</head>");
    page.Line("<!-- Page created on ", now, " -->");
    AddBodyTag(page, s);
    return page.Bytes();
}

std::string PageTitleTable(const HtmlSettings& s, std::string_view now) {
    PageText page;
    page.Line();
    page.Line("<table border=0 cellspacing=0 cellpadding=0 cols=1 width=\"98%\" align=center>");
    page.Line(" <tr>");
    page.Line("  <td align=center valign=center>");
    page.Line("  <div class=exif_title>");
    page.Line("   <font color=#", s.HtmlTextColor, " size=4><b>", s.HtmlTitle, "</b></font>");
    page.Line("  </div>");
    page.Line();
    page.Line("  <div class=\"buttons\">");
    if (!s.HtmlHomePage.empty()) {
        page.Line("<a class=\"navt\" title=\"Goto web page\"");
        page.Line("   href=\"", s.HtmlHomePage, "\">", s.HtmlHomeText, "</a>");
        page.Line("&nbsp;&nbsp;&nbsp;&nbsp;");
    }
    if (!s.HtmlEmail.empty()) {
        page.Line("<a title=\"Send email to ", s.HtmlEmail, "\"");
        page.Line("       href=\"mailto:", s.HtmlEmail, "\">Email: ", s.HtmlEmail, "</a>");
    }
    page.Line("  </div>");
    page.Line("<div class=\"date\">Created: ", now, "</div>");
    page.Line("  </td>");
    page.Line(" </tr>");
    page.Line("</table>");
    page.Line();
    return page.Bytes();
}

std::string PageClose() {
    PageText page;
    page.Line("</body>");
    page.Line("</html>");
    return page.Bytes();
}

std::string AppendLine(std::string_view now) {
    PageText page;
    page.Line("<!-- Appended data on ", now, " follows -->");
    return page.Bytes();
}

long long AppendOffset(long long pageBytes) {
    return pageBytes > kLargestAppend ? -1 : pageBytes - kCloseReach;
}

std::string RelativePrefix(std::string_view pagePath, std::string_view pictureFolder) {
    const std::string folder = WithoutTrailingSeparator(pictureFolder);
    const std::size_t folders = folder == kRoot ? 1 : PathParts(folder).size();
    return PathParts(pagePath).size() == folders + 1 ? "" : "../";
}

bool HomeLink(std::string_view pagePath, std::string_view homePath, std::string& link) {
    const std::size_t page = PathParts(pagePath).size();
    const std::size_t home = PathParts(homePath).size();
    link.clear();
    if (home > page) return false;
    for (std::size_t up = home; up < page; ++up) link += "../";
    link += LastPart(homePath);
    return true;
}

} // namespace tarn
