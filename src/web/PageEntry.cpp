#include "web/PageEntry.h"

#include "web/PageText.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t kEndingLength = 4; // ".jpg"
constexpr std::string_view kSeparatingLine = "<p class=\"line\"></p>";
constexpr int kRightIndent = 25; // pixels between a picture and the notes to its right

enum Format { WithData = 1, WithNotes = 2, PictureOnly = 3, NotesToRight = 4 };

bool IsVideo(const EntryFacts& facts) {
    return facts.type == ".MP4";
}

std::string_view WithoutEnding(std::string_view name) {
    return name.substr(0, name.size() - std::min(name.size(), kEndingLength));
}

std::string_view Ending(std::string_view name) {
    return name.substr(WithoutEnding(name).size());
}

bool UsesLabels(const HtmlSettings& s) {
    return s.HtmlCheckImageLabel != 0 && !s.HtmlTextImageLabel.empty();
}

// Writes one entry; holds what its blocks share.
class EntryWriter {
public:
    EntryWriter(const HtmlSettings& settings, const EntryFacts& facts, const PageRun& run)
        : s(settings), f(facts), m_run(run), m_n(NumberText(run.imageNumber)),
          m_source(IsVideo(facts) ? kVideoPicture : facts.name) {
        SetLink();
    }

    std::string Write(bool exifInfo) {
        switch (s.HtmlPictureType) {
        case WithData:
            WriteWithData(exifInfo);
            break;
        case WithNotes:
            WriteWithNotes();
            break;
        case PictureOnly:
            WritePictureOnly();
            break;
        case NotesToRight:
            WriteNotesToRight();
            break;
        default:
            break;
        }
        m_page.Line("</table>");
        m_page.Line();
        return m_page.Bytes();
    }

private:
    void SetLink() {
        const bool video = IsVideo(f);
        const std::string tooltip =
            s.HtmlSizeF ? "Click to view" : "Click to view full size " + f.sizeText;
        if (s.HtmlLayout1 || (s.HtmlLayout2 && video))
            m_open = "<a id=\"link" + m_n + "\" href=\"" + f.name + "\" > ";
        else if (s.HtmlLayout3 && !s.HtmlLayout2)
            m_open = "<a id=\"link" + m_n + "\" href=\"" + m_run.linkTarget + "\"> ";
        if (!m_open.empty()) m_close = "</a>";

        // The words for a video have no attribute's name; browsers pass over them.
        if (video)
            m_title = "Click to play video";
        else if (s.HtmlLayout1)
            m_title = " title=\"" + tooltip + "\"";
        else if (s.HtmlLayout2)
            m_title = s.HtmlZoomPan != 0 ? " title=\"" + std::string(kZoomHint) + "\"" : "";
        else if (s.HtmlLayout3)
            m_title = " title=\"Click to view linked image\"";
    }

    void BeginTable(std::string_view padding, std::string_view columns) {
        m_page.Line("<table BORDER=0 CELLSPACING=0 CELLPADDING=", padding, " COLS=", columns,
                    " WIDTH=\"98%\" ALIGN=CENTER>");
        m_page.Line(" <tr>");
    }

    void NextRow() {
        m_page.Line("  </td>");
        m_page.Line(" </tr>");
        m_page.Line(" <tr>");
        m_page.Line("  <td class=\"ct\">");
    }

    void EndRow() {
        if (f.hasVideo && s.HtmlMp4Video != 0)
            m_page.Line("<br><a href=\"", VideoNameOf(s, f.name),
                        "\"><u>Click here for mp4 video</u></a>");
        m_page.Line("  </td>");
        m_page.Line(" </tr>");
    }

    void WriteWithData(bool exifInfo) {
        BeginTable("5", "2");
        if (IsTextEntry(f.type)) {
            Text();
        } else {
            m_page.Line("  <td class=\"ct\">");
            Image();
        }
        m_page.Line("  </td>");
        m_page.Line("  <td class=\"lt\">");
        m_page.Line("   <font color=#", s.HtmlTextColor, ">");
        if (exifInfo) {
            m_page.Line("<pre>");
            m_page.Line();
            for (const std::string& row : f.panel) m_page.Line(row);
            m_page.Line("</pre>");
        }
        m_page.Line("   </font></td>");
        m_page.Line(" </tr>");
        m_page.Line(" <tr>");
        m_page.Line("  <td class=\"ct\">");
        Notes("", kSeparatingLine);
        EndRow();
    }

    void WriteWithNotes() {
        BeginTable("5", "1");
        if (IsTextEntry(f.type)) {
            Text();
            m_page.Line(kSeparatingLine);
        } else if (s.HtmlPnotesBottom) {
            m_page.Line("  <td class=\"ct\">");
            Image();
            NextRow();
            Notes("", kSeparatingLine);
        } else {
            m_page.Line("  <td class=\"ct\">");
            Notes("", "");
            NextRow();
            Image();
            m_page.Line("  ", kSeparatingLine);
        }
        EndRow();
    }

    void WritePictureOnly() {
        BeginTable("5", "1");
        if (IsTextEntry(f.type)) {
            Text();
        } else {
            m_page.Line("  <td class=\"ct\">");
            Image();
        }
        m_page.Line(kSeparatingLine);
        m_page.Line("  </td>"); // the row stays open
    }

    void WriteNotesToRight() {
        BeginTable("10", "1");
        if (IsTextEntry(f.type)) {
            Text();
        } else {
            m_page.Line("  <td class=\"lt\">");
            Image();
            Notes(std::string(kSeparatingLine) + "<p style=\"margin: 0px 0px 0px " +
                      NumberText(kRightIndent + m_sizeValue) + "px\">",
                  "</p>");
        }
        EndRow();
    }

    void ImageLine(const std::string& rest) {
        m_page.Line(m_open, "<img SRC=\"", m_run.prefix, m_source, "\"", rest);
    }

    static std::string HeightWidth(int height, int width) {
        return " height=" + NumberText(height) + " width=" + NumberText(width);
    }

    // Each size mode that is on writes its line.
    void ImageLines() {
        if (s.HtmlSizeW) {
            m_sizeValue = std::min(s.HtmlWidth, f.width);
            ImageLine(" width=" + NumberText(m_sizeValue));
        }
        if (s.HtmlSizeH) {
            m_sizeValue = std::min(s.HtmlHeight, f.height);
            ImageLine(" height=" + NumberText(m_sizeValue));
        }
        if (s.HtmlSizeO) ImageLine(HeightWidth(f.previewHeight, f.previewWidth));
        if (s.HtmlSizeF) {
            m_sizeValue = f.width;
            ImageLine(IsVideo(f) ? "" : HeightWidth(f.height, f.width));
        }
    }

    void Image() {
        ImageLines();
        m_page.Line(" name=\"flip", m_n, "\"");
        m_page.Line(m_title);
        if (s.HtmlPictureType == NotesToRight) m_page.Line(" align=\"left\" hspace=\"10\"");
        m_page.Line(" ALT=\"", m_source, "\">", m_close);
    }

    // The note's first line is its heading.
    void Heading(std::string_view prefix, const std::string& line) {
        if (s.HtmlZoomPan == 0) {
            m_page.Line(prefix, "<b>", line, "</b></font><br>");
        } else {
            m_page.Line(prefix, "<b>", line, "</b></font>");
            m_page.Line("  <span style=\"margin: 0 0 0 50px; font-style: italic; font-weight: "
                        "normal;");
            m_page.Line("  text-decoration: underline; text-decoration-color: #", s.HtmlBorderColor,
                        ";\">");
            const bool video = IsVideo(f);
            m_page.Line("  <a title=\"",
                        video ? "Click to play video" : "Click to view full size " + f.sizeText,
                        "\"");
            m_page.Line("  href=\"", video ? f.name : m_source, "\"> ",
                        video ? "Play Video" : "View Image", "</a>");
            m_page.Line("  </span>");
            m_page.Line("  <font color=#", s.HtmlTextColor, ">");
            m_page.Line("  <small>&nbsp;(", video ? f.fileSizeText : f.sizeText, ")</small>");
            m_page.Line("  <br>");
        }
        m_page.Line("<font color=#", s.HtmlTextColor, ">");
    }

    void Notes(std::string_view prefix, std::string_view suffix) {
        const std::vector<std::string> lines = NoteLines(f.note);
        if (lines.empty()) {
            Label();
            m_page.Line(prefix, suffix);
            return;
        }
        if (s.HtmlPicLeft) m_page.Line("<p class=\"tx\">");
        m_page.Line("<font color=#", s.HtmlTextColor, ">");
        Heading(prefix, lines.front());
        for (std::size_t i = 1; i < lines.size(); ++i) m_page.Line(lines[i], "<br>");
        m_page.Line(s.HtmlPicLeft ? "</p>" : "", "</font>");
        Label();
        m_page.Line(suffix);
    }

    void Text() {
        m_page.Line("  <td class=\"ct\">");
        m_page.Line("  <p class=\"tx\">");
        for (const std::string& line : f.lines) m_page.Line(line, "<br>");
        m_page.Line("  </p>");
    }

    // One of the two words that swap the picture: shows `name` and makes itself bold.
    void Switch(std::string_view name, std::string_view normal, std::string_view bold) {
        m_page.Line(" <a href=\"#\"");
        m_page.Line(" onclick=\"if (document.images) document.flip", m_n, ".src='", name, "';");
        m_page.Line("             document.getElementById('link", m_n, "').href='", name, "';");
        m_page.Line("             document.getElementById('spanoff", m_n, "').style.fontWeight='",
                    normal, "';");
        m_page.Line("             document.getElementById('spanon", m_n, "').style.fontWeight='",
                    bold, "';");
        m_page.Line("             return false;\">");
    }

    // The spans are closed by nothing; pages have always had them so.
    void Label() {
        if (!UsesLabels(s) || !f.hasLabel) return;
        m_page.Line("<p class=\"labels\">");
        m_page.Line(" Turn labels - ");
        Switch(LabelNameOf(s, f.name), "normal", "bold");
        m_page.Line("             <span id=\"spanon", m_n, "\">On</a>");
        Switch(m_source, "bold", "normal");
        m_page.Line("             <span id=\"spanoff", m_n,
                    "\" style=\"font-weight: bold;\">Off</a>");
        m_page.Line("</p>");
    }

    const HtmlSettings& s;
    const EntryFacts& f;
    const PageRun& m_run;
    PageText m_page;
    std::string m_n;      // the image's number
    std::string m_source; // the picture that is shown
    std::string m_open;   // the link around it
    std::string m_close;
    std::string m_title;
    int m_sizeValue = 0; // the last side that the image lines set
};

} // namespace

bool IsTextEntry(std::string_view type) {
    return type == ".TXT" || type == ".LOG";
}

std::string LabelNameOf(const HtmlSettings& settings, std::string_view name) {
    if (!UsesLabels(settings)) return {};
    return std::string(WithoutEnding(name)) + settings.HtmlTextImageLabel +
           std::string(Ending(name));
}

bool IsLabelPicture(const HtmlSettings& settings, std::string_view name) {
    return UsesLabels(settings) && WithoutEnding(name).ends_with(settings.HtmlTextImageLabel);
}

std::string VideoNameOf(const HtmlSettings& settings, std::string_view name) {
    return settings.HtmlMp4Video == 0 ? std::string() : std::string(WithoutEnding(name)) + ".mp4";
}

std::string PageEntry(const HtmlSettings& settings, bool exifInfo, const EntryFacts& facts,
                      PageRun& run) {
    ++run.imageNumber;
    PageText page;
    page.Add(EntryWriter(settings, facts, run).Write(exifInfo));
    if (settings.HtmlPageBreak < 1) return page.Bytes();
    if (settings.HtmlPageBreak == run.sinceBreak) {
        page.Line("<p style=\"page-break-before: always\">");
        page.Line();
        run.sinceBreak = 1;
    } else {
        ++run.sinceBreak;
    }
    return page.Bytes();
}

} // namespace tarn
