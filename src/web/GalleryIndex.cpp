#include "web/Gallery.h"
#include "web/GalleryParts.h"
#include "web/PageText.h"
#include "web/SavedValues.h"

#include "common/numbers.h"

#include <algorithm>
#include <array>

namespace tarn {

namespace {

constexpr int kFrameBeside = 95; // pixels that the frame of thumbnails is wider than they are

// Title and links, in a box; in frames they lead out of them.
void AddTitleBox(PageText& page, const GallerySettings& s, std::string_view target) {
    page.Line("<div class=exif_title>");
    page.Line("<table border-collapse=collapse width=100%>");
    page.Line("<tr>");
    const auto link = [&](const std::string& address, const std::string& text) {
        page.Line("<td class=\"home\">");
        page.Line(" <a class=\"navt\" href=\"", address, "\"", target, ">", text, "</a>");
        page.Line("</td>");
    };
    if (s.HtmlThumbHomeLink != 0) link(s.HtmlThumbHomeUrl, "Home");
    if (s.ThumbFileLink != 0) link(s.ThumbFileLinkURL, s.ThumbFileLinkButtonText);
    page.Line("<td class=\"title\">");
    page.Line(s.HtmlThumbTitle);
    page.Line("</td>");
    page.Line("</tr>");
    page.Line("</table>");
    page.Line("</div>");
    page.Line();
}

void AddHead(PageText& page, const GallerySettings& s, const GalleryRunFacts& run) {
    AddHeadLines(page, run.version);
    AddStyleLink(page);
    page.Line(" <title> ", s.HtmlThumbTitle, " - Index </title>");
}

void BeginCells(PageText& page, const GallerySettings& s, int columns, std::string_view align) {
    page.Line("<table border=0 cellspacing=", NumberText(s.ThumbSpacing),
              " cellpadding=0 cols=", NumberText(columns), "; align=", align, ">");
}

int ColumnsOf(const GallerySettings& s, const GalleryRunFacts& run) {
    return run.frames ? 1 : std::max(1, s.HtmlThumbSlider);
}

void AddFrameset(PageText& page, const GallerySettings& s, const GalleryRunFacts& run) {
    page.Line();
    page.Line("<frameset rows=\"60px, *\" bordercolor=\"#", s.HtmlThumbBorderColor, "\">");
    page.Line("  <frame src=\"", kFrameTopName, "\" scrolling=no name=\"Top\">");
    page.Line(" <frameset cols=\"", NumberText(run.thumbnailSize + kFrameBeside), "px, *\">");
    page.Line("   <frame src=\"", kFrameThumbsName, "\" name=\"Thumbs\">");
    page.Line("   <frame src=\"", PicturePageName(1), "\" name=\"Full\">");
    page.Line(" </frameset>");
    page.Line(" </frameset>");
    page.Line();
    page.Line("</html>");
}

// The scripts that keep the marker on the cell of the picture shown.
void AddFrameScripts(PageText& page, const GalleryRunFacts& run) {
    page.Line("<script language=javascript>");
    page.Line("function SelectFrame(id) {");
    page.Line("parent.Full.location.href = id;}");
    page.Line("</script>");
    page.Line();
    page.Line("<script language=javascript>");
    page.Line("function ChangeClass(id) {");
    page.Line("for(i = 1; i < ", NumberText(run.count + 1), "; i++){");
    page.Line("document.getElementById(i).className = \"thumbs\";");
    page.Line("}");
    page.Line("document.getElementById(id).className = \"thumbs_cur\";");
    page.Line("}");
    page.Line("function LoadTrigger() {");
    page.Line("ChangeClass(1);");
    page.Line("}");
    page.Line("window.onload = LoadTrigger;");
    page.Line("</script>");
    page.Line();
}

// The note's first lines, and then the lines of chosen kinds, whether they stood there already or
// not.
void AddCellNote(PageText& page, const GallerySettings& s, const std::string& note) {
    const std::vector<std::string> lines = NoteLines(note);
    const std::size_t limit = s.HtmlThumbNotesT >= kAllNoteLines
                                  ? lines.size()
                                  : std::size_t(std::max(0, s.HtmlThumbNotesT));
    for (std::size_t i = 0; s.HtmlThumbNotes != 0 && i < std::min(limit, lines.size()); ++i)
        page.Line(i == 0 ? "" : "<br>", lines[i]);
    const std::array<std::pair<int, std::string_view>, 4> kinds = {
        {{s.ThumbCheckTele, "Telescope:"},
         {s.ThumbCheckCamera, "Camera:"},
         {s.ThumbCheckFilter, "Filter:"},
         {s.ThumbCheckDate, "Date:"}}};
    for (const auto& [wanted, start] : kinds) {
        for (const std::string& line : lines) {
            if (wanted != 0 && line.starts_with(start)) page.Line("<br>", line);
        }
    }
}

void AddCell(PageText& page, const GallerySettings& s, const GalleryRunFacts& run,
             const GalleryPicture& picture, int k) {
    const std::string number = NumberText(k);
    const bool linked = s.NoLinkCheck == 0;
    page.Line("  <td id=", number, " class=\"thumbs\">");
    if (linked && run.frames) {
        page.Line("    <a class=\"thumbs\" href=\"javascript:SelectFrame('", PicturePageName(k),
                  "')\"");
        page.Line("       onclick=\"ChangeClass(", number, ")\">");
    } else if (linked) {
        page.Line("    <a class=\"thumbs\" href=\"", PicturePageName(k), "\">");
    }
    page.Line("    <img class=\"thumbs\" SRC=\"", run.prefix, run.subFolder, "/", picture.thumbnail,
              "\"><br>");
    if (s.SizeCheck != 0) {
        page.Line("(", GalleryFileSize(picture.fileBytes), ")");
        page.Line("<br>");
    }
    AddCellNote(page, s, picture.note);
    if (linked) page.Line("</a>");
    page.Line("</td>");
    page.Line();
}

} // namespace

std::string PicturePageName(int k) {
    return "ImageT" + FormatPadded(k, 3) + ".html";
}

std::string GalleryFileSize(long long bytes) {
    constexpr long long kTenth = 100000; // of a million; halves are rounded up
    constexpr long long kThousand = 1000;
    if (bytes < 10 * kTenth) return NumberText((bytes + kThousand / 2) / kThousand) + "K";
    const long long tenths = (bytes + kTenth / 2) / kTenth;
    return NumberText(tenths / 10) + "." + NumberText(tenths % 10) + "M";
}

std::string GalleryIndexHead(const GallerySettings& s, const GalleryRunFacts& run) {
    PageText page;
    page.Line("<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01", run.frames ? "Frameset" : "",
              "//EN\">");
    page.Line("<!--TarnView ", run.version, "  saved settings");
    AddSavedValues(page, s);
    page.Line("-->");
    page.Line();
    AddHead(page, s, run);
    page.Line("</head>");
    if (run.frames) {
        AddFrameset(page, s, run);
        return page.Bytes();
    }
    page.Line("<body style=\"overflow:visible\">");
    page.Line();
    AddTitleBox(page, s, "");
    page.Line();
    BeginCells(page, s, ColumnsOf(s, run), "center");
    return page.Bytes();
}

std::string GalleryFrameTop(const GallerySettings& s, const GalleryRunFacts& run) {
    PageText page;
    page.Line(kDocumentType);
    AddHead(page, s, run);
    page.Line();
    page.Line("</head>");
    page.Line("<body>");
    page.Line();
    AddTitleBox(page, s, " target=\"_top\"");
    page.Line("</body>");
    page.Line("</html>");
    return page.Bytes();
}

std::string GalleryFrameThumbsHead(const GallerySettings& s, const GalleryRunFacts& run) {
    PageText page;
    page.Line(kDocumentType);
    AddHead(page, s, run);
    page.Line();
    AddFrameScripts(page, run);
    page.Line("</head>");
    page.Line("<body>");
    page.Line();
    page.Line();
    BeginCells(page, s, ColumnsOf(s, run), "center");
    return page.Bytes();
}

GalleryCells::GalleryCells(const GallerySettings& settings, const GalleryRunFacts& run)
    : m_settings(settings), m_run(run), m_columns(ColumnsOf(settings, run)) {}

std::string GalleryCells::Next(const GalleryPicture& picture) {
    PageText page;
    if (m_k % m_columns == 0) page.Line(" <tr>");
    ++m_k;
    AddCell(page, m_settings, m_run, picture, m_k);
    const bool last = m_k == m_run.count;
    if (!last && m_k % m_columns != 0) return page.Bytes();
    page.Line("</tr>");
    const int rows = m_settings.HtmlThumbPagebreak;
    if (last || rows < 1) return page.Bytes();
    if (rows != m_rowsSinceBreak) {
        ++m_rowsSinceBreak;
        return page.Bytes();
    }
    page.Line("</table>");
    page.Line();
    page.Line("<p style=\"page-break-before: always\">");
    BeginCells(page, m_settings, m_columns, AlignOf(m_settings));
    page.Line();
    m_rowsSinceBreak = 1;
    return page.Bytes();
}

std::string GalleryIndexFoot(const GallerySettings& s, const GalleryRunFacts& run) {
    PageText page;
    page.Line("</table>");
    page.Line();
    if (!run.frames) {
        page.Line("<div class=\"navt\">");
        if (s.HtmlThumbCloseWindow != 0)
            page.Line("  <a class=\"navt2\" href=\"javascript:top.close();\">Close</a>");
        page.Line("</div>");
        page.Line();
    }
    page.Line("<div class=\"date\">");
    page.Line("Created: ", run.now);
    page.Line("</div>");
    page.Line();
    const std::string& address = s.HtmlThumbEmailaddress;
    if (!address.empty()) {
        page.Line("<div class=\"email\">");
        page.Line("  Email: ");
        page.Line("  <a class=\"thumbs\"");
        page.Line("     title=\"Send email to ", address, "\"");
        page.Line("     href=\"mailto:", address, "\">", address, "</a>");
        page.Line("</div>");
        page.Line();
    }
    page.Line("</body>");
    page.Line("</html>");
    return page.Bytes();
}

} // namespace tarn
