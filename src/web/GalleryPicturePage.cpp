#include "web/Gallery.h"
#include "web/GalleryParts.h"
#include "web/PageText.h"

#include "common/numbers.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr int kMiddleHalf = 75; // half of the strip between the map's areas

bool HasLimit(const GallerySettings& s) {
    return s.HtmlThumbCs != 0 && s.ThumbImagePos != ImageAuto;
}

int LimitOf(const GallerySettings& s) {
    return ParseInt32(s.HtmlThumbCsValue).value_or(0);
}

bool IsOn(const GallerySettings& s, std::size_t line) {
    const std::string& boxes = s.NotesLineBottomCheck;
    return line < boxes.size() && boxes[line] == '1';
}

bool AnyLineChosen(const GallerySettings& s) {
    return s.NotesLineBottomCheck.find('1') != std::string::npos;
}

class PicturePageWriter {
public:
    PicturePageWriter(const GallerySettings& settings, const GalleryRunFacts& run,
                      const GalleryPicture& picture, int k)
        : s(settings), m_run(run), p(picture), m_k(k), m_lines(NoteLines(picture.note)),
          m_linked(settings.ThumbNoLinkPic == 0), m_path(run.prefix + picture.name),
          m_target(run.frames ? "_top" : "_self"),
          m_size(GalleryMapSize(settings, picture.width, picture.height)) {
        m_pixels = NumberText(p.width) + "x" + NumberText(p.height);
        m_tooltip = p.name + " (" + m_pixels + ")  [" + GalleryFileSize(p.fileBytes) + "]";
        const bool fillsTop = s.ThumbNavTop && s.ThumbNavSpace != 0 && s.HtmlThumbCs == 0;
        m_imageClass = s.ThumbImagePos != ImageAuto ? "exif_slide"
                       : fillsTop                   ? "bg_full3"
                                                    : "bg_full2";
        m_previous = m_k > 1 ? PicturePageName(m_k - 1) : WrapsTo(m_run.count, "");
        // Without wrapping the last page keeps the name that the one before it went on to.
        m_next = m_k < m_run.count
                     ? PicturePageName(m_k + 1)
                     : WrapsTo(1, m_run.count > 1 ? PicturePageName(m_k) : std::string());
    }

    std::string Write() {
        Head();
        m_page.Line();
        Navigation();
        TopNotes();
        m_page.Line();
        m_page.Line();
        if (s.HtmlThumbNotesTop) {
            Notes();
            Image();
        } else if (s.HtmlThumbNotesBottom) {
            Image();
            Notes();
        } else {
            ImageAndNotesBeside();
        }
        m_page.Line();
        m_page.Line("</body>");
        m_page.Line("</html>");
        return m_page.Bytes();
    }

private:
    std::string WrapsTo(int k, std::string otherwise) const {
        return s.HtmlThumbWrap != 0 ? PicturePageName(k) : std::move(otherwise);
    }

    void Head() {
        m_page.Line(kDocumentType);
        AddHeadLines(m_page, m_run.version);
        AddStyleLink(m_page);
        m_page.Line(" <title>", s.HtmlThumbTitle, "</title>");
        if (m_run.frames) {
            m_page.Line();
            m_page.Line("<script language=javascript>");
            m_page.Line("function ChangeClassT(id, id2) {");
            m_page.Line("top.Thumbs.document.getElementById(id).className = \"thumbs_cur\";");
            m_page.Line("top.Thumbs.document.getElementById(id2).className = \"thumbs\";");
            m_page.Line("}");
            m_page.Line("</script>");
            m_page.Line();
        }
        m_page.Line("</head>");
        if (m_linked) {
            m_page.Line("<body>");
        } else {
            m_page.Line();
            AddZoomLines(m_page);
        }
    }

    void Button(std::string_view address, std::string_view more, std::string_view text) {
        m_page.Line("  <a class=\"nav\" href=\"", address, "\"", more, ">", text, "</a>");
    }

    // The buttons that hide and show the notes above the picture.
    void NotesSwitch(std::string_view title, std::string_view display, std::string_view text) {
        m_page.Line("  <a class=\"nav\" herf=\"#\" title=\"", title,
                    "\" style=\"cursor: default\"");
        m_page.Line("  onclick=\"document.getElementById('table_notes').style.display='", display,
                    "';");
        m_page.Line("     return false;\">", text, "</a>");
    }

    void StepButton(const std::string& page, bool leads, int marked, std::string_view text) {
        if (!leads) {
            m_page.Line("  <span class=\"inactive\">", text, "</span>");
            return;
        }
        Button(page,
               m_run.frames
                   ? " onclick=\"ChangeClassT(" + NumberText(marked) + "," + NumberText(m_k) + ")\""
                   : "",
               text);
    }

    // Opens a table that TopNotes closes.
    void Navigation() {
        const bool plain = !m_run.frames;
        const bool wraps = s.HtmlThumbWrap != 0;
        m_page.Line("<table border=0 cellspacing=0 cellpadding=0>");
        m_page.Line("<tr style=\"position: relative; ",
                    s.HtmlThumbNotesTop ? "top: 3" : "bottom: 0", "px; left: 10px;\">");
        m_page.Line("<td>");
        m_page.Line("<div>");
        if (plain && s.HtmlThumbHomeLink != 0) Button(s.HtmlThumbHomeUrl, "", "Home");
        if (plain) Button(m_run.indexName, "", "Index");
        if (plain && s.ThumbFileLink != 0)
            Button(s.ThumbFileLinkURL, "", s.ThumbFileLinkButtonText);
        if (s.HtmlThumbNotesTop) {
            NotesSwitch("Description data", "none", "Hide");
            NotesSwitch(m_lines.empty() ? std::string_view() : m_lines.front(), "block", "Show");
        }
        Button(m_path, " target=\"_self\" title=\"" + m_tooltip + "\"", "Image");
        StepButton(m_previous, m_k > 1 || wraps, m_k - 1, "Previous");
        StepButton(m_next, m_k < m_run.count || wraps, m_k + 1, "Next");
        if (plain && s.HtmlThumbCloseWindow != 0)
            Button("javascript:top.close();", "", "Close window");
        m_page.Line("</div>");
        m_page.Line(" </td>");
        m_page.Line("  <td class=\"numof\">");
        m_page.Line("(", NumberText(m_k), " of ", NumberText(m_run.count),
                    ")&nbsp;&nbsp;&nbsp;&nbsp;");
        m_page.Line("  </td>");
        if (!m_linked) m_page.Line("  <td class=\"wheel\">", kZoomHint, "</td>");
    }

    void TopNotes() {
        if (s.HtmlThumbNotesTopLine != 0 && !m_lines.empty()) {
            const auto last = static_cast<long long>(m_lines.size()) - 1;
            const long long first = std::clamp<long long>(s.HtmlThumbBeginSliderTop - 1LL, 0, last);
            const long long end = std::min(last, first + s.HtmlThumbSliderTop - 1);
            for (long long i = first; i == first || i <= end; ++i)
                m_page.Line("  <td class=\"desc", i == first ? "1" : "2", "\">",
                            m_lines[std::size_t(i)], "</td>");
        }
        m_page.Line(" </tr>");
        m_page.Line("</table>");
    }

    // Left of the picture to the page before, right of it to the next.
    void Map() {
        const auto area = [&](const std::string& page, std::string_view alt, std::string_view title,
                              const std::string& coords) {
            m_page.Line("   <area href=\"", page, "\" alt=\"", alt,
                        "\" target=\"_self\" shape=\"rect\" ");
            m_page.Line("      title = \"", title, "\"");
            m_page.Line("      coords = \"", coords, "\" > ");
        };
        const std::string height = NumberText(m_size.height);
        const auto middle = static_cast<long long>(std::floor(m_size.width / 2.0));
        m_page.Line(" <div id=\"image_map\">");
        m_page.Line("  <map name=\"map_picture\">");
        area(m_previous, "Previous", "Click for previous image",
             "0, 0, " + NumberText(middle - kMiddleHalf) + ", " + height);
        area(m_next, "Next", "Click for next image",
             NumberText(middle + kMiddleHalf) + ", 0, " + NumberText(m_size.width) + ", " + height);
        m_page.Line("  </map>");
    }

    void Anchor(const std::string& title) {
        if (m_linked)
            m_page.Line("  <a href=\"", m_path, "\"", title, " target=\"", m_target, "\">");
    }

    // The picture at a limited size.
    void LimitedImage(bool withTitle) {
        Anchor("");
        m_page.Line("  <img class=\"exif_slide\"",
                    withTitle ? "title=\"Click for full size picture (" + m_pixels + ")\"" : "",
                    " src = \"", m_path, "\"; border = 0; \"");
        const std::string limit = NumberText(LimitOf(s));
        if (s.HtmlThumbCsWidth) m_page.Line("        style=\"width:", limit, "px\"");
        if (s.HtmlThumbCsHeight) m_page.Line("        style=\"height:", limit, "px\"");
        m_page.Line("  usemap=\"#map_picture\">");
    }

    void Image() {
        const bool automatic = s.ThumbImagePos == ImageAuto;
        m_page.Line();
        if (!automatic) {
            const std::string align = AlignOf(s);
            m_page.Line("<table", align == "left" ? "" : " align=" + align, ">");
            m_page.Line(" <tr><td>");
        }
        if (m_linked) Map();
        if (HasLimit(s)) {
            LimitedImage(true);
        } else {
            Anchor(" title=\"" + m_tooltip + "\"");
            m_page.Line("  <img  id=\"img1\" class=\"", m_imageClass, "\" src=\"", m_path,
                        "\" border = 0");
            m_page.Line("        title=\"", m_tooltip, "\" usemap=\"#map_picture\">");
        }
        if (m_linked) m_page.Line("  </a>");
        m_page.Line("</div>");
        if (!automatic) {
            m_page.Line(" </td></tr>");
            m_page.Line("</table>");
            m_page.Line();
        }
        m_page.Line();
    }

    std::string_view Tail() const { return s.LongNotesLine != 0 ? " --" : "<br>"; }

    void FirstNoteLine(std::string_view kind, const std::string& line) {
        m_page.Line("  <div class=\"", kind, "\">");
        m_page.Line(line);
        m_page.Line("  </div>");
    }

    // The first of the lines in a div of its own, the others in a common one.
    void NoteBody(const std::vector<std::string>& lines, std::string_view firstKind,
                  std::string_view kind) {
        if (lines.empty()) return;
        FirstNoteLine(firstKind, lines.front());
        if (lines.size() < 2) return;
        m_page.Line("  <div class=\"", kind, "\">");
        for (std::size_t i = 1; i < lines.size(); ++i) m_page.Line(lines[i], Tail());
        m_page.Line("  </div>");
    }

    void NoteBody() {
        const std::string_view kind = s.ThumbImagePos == ImageCenter ? "notes" : "notes2";
        if (!AnyLineChosen(s)) {
            NoteBody(m_lines, "line1", kind);
            return;
        }
        std::vector<std::string> chosen;
        for (std::size_t i = 0; i < m_lines.size(); ++i)
            if (IsOn(s, i)) chosen.push_back(m_lines[i]);
        NoteBody(chosen, IsOn(s, 0) ? "line1" : kind, kind);
    }

    void Notes() {
        const std::string align = AlignOf(s);
        const bool fixed = !s.ThumbNavTop && s.ThumbImagePos == ImageAuto;
        m_page.Line("<table id=table_notes border=0 cellspacing=1 cellpadding=2 cols=1 ",
                    s.ThumbImagePos == ImageCenter ? "align=center" : "", ">");
        m_page.Line(" <tr style=\"position: ",
                    fixed ? "fixed; bottom: 40px; left: 10px" : "relative; top: 0px; left: 15px",
                    ";\">");
        m_page.Line("  <td align=", align, ">");
        if (s.HtmlThumbNotes2 != 0) NoteBody();
        m_page.Line("  </td>");
        m_page.Line(" </tr>");
        if (s.HtmlThumbData != 0) {
            m_page.Line(" <tr>");
            m_page.Line("  <td align=center>");
            m_page.Line("  <div class=\"exif_data\"><pre>");
            for (const std::string& row : p.panel) m_page.Line(row);
            m_page.Line("</pre></div>");
            m_page.Line("  </td>");
            m_page.Line(" </tr>");
        }
        m_page.Line("</table>");
    }

    void ImageAndNotesBeside() {
        m_page.Line("<table>");
        m_page.Line(" <tr>");
        m_page.Line("  <td align=", AlignOf(s), ">");
        if (m_linked) Map();
        if (HasLimit(s)) {
            LimitedImage(m_linked);
        } else {
            Anchor("");
            m_page.Line("  <img id=\"img1\" class=\"", m_imageClass, "\" src=\"", m_path,
                        "\" border = 0  usemap=\"#map_picture\">");
        }
        if (m_linked) m_page.Line("  </a>");
        m_page.Line("</div>");
        m_page.Line("  </td>");
        if (m_lines.size() > 1) { // a note of one line is not shown here
            m_page.Line("  <td class=\"notes\">");
            m_page.Line("   <li class=\"plain\"><div class=\"line1\">", m_lines.front(),
                        "</div></li>");
            for (std::size_t i = 1; i < m_lines.size(); ++i)
                m_page.Line("   <li class=\"plain\">", m_lines[i], "</li>");
            m_page.Line("  </td>");
        }
        m_page.Line(" </tr>");
        m_page.Line("</table>");
    }

    const GallerySettings& s;
    const GalleryRunFacts& m_run;
    const GalleryPicture& p;
    int m_k;
    std::vector<std::string> m_lines;
    bool m_linked; // else the wheel zooms the picture
    std::string m_path;
    std::string m_target;
    MapSize m_size;
    std::string m_pixels;
    std::string m_tooltip;
    std::string m_imageClass;
    std::string m_previous;
    std::string m_next;
    PageText m_page;
};

} // namespace

MapSize GalleryMapSize(const GallerySettings& s, int width, int height) {
    if (!HasLimit(s) || width <= 0 || height <= 0) return {width, height};
    const double ratio = double(float(width) / float(height));
    const int limit = LimitOf(s);
    if (s.HtmlThumbCsWidth) return {limit, RoundHalfEven(limit / ratio)};
    if (s.HtmlThumbCsHeight) return {RoundHalfEven(limit * ratio), limit};
    return {width, height};
}

bool LimitHidesPictures(const GallerySettings& s) {
    return HasLimit(s) && (s.HtmlThumbCsWidth || s.HtmlThumbCsHeight) && LimitOf(s) < 1;
}

std::string GalleryPicturePage(const GallerySettings& settings, const GalleryRunFacts& run,
                               const GalleryPicture& picture, int k) {
    return PicturePageWriter(settings, run, picture, k).Write();
}

} // namespace tarn
