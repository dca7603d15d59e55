#include "web/PageText.h"

#include "common/codepage.h"
#include "common/utf8.h"

namespace tarn {

std::string ToPageBytes(std::string_view text) {
    if (auto all = ToCodePage(text)) return *all;
    std::string bytes;
    for (std::size_t pos = 0; pos < text.size();) {
        const Utf8Char next = DecodeUtf8(text, pos);
        const auto placed = ToCodePage(text.substr(pos, std::size_t(next.length)));
        if (placed) {
            bytes += *placed;
        } else {
            bytes += next.code < 256 ? char(next.code) : '?';
        }
        pos += std::size_t(next.length);
    }
    return bytes;
}

bool BreaksItsLink(std::string_view name) {
    // A blank at either end is dropped, letters before a colon are taken for a protocol.
    constexpr std::string_view kCutting = "#?%\"\\";
    const std::size_t colon = name.find(':');
    const auto isLetter = [](char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; };
    return !ToCodePage(name) || name.find_first_of(kCutting) != std::string_view::npos ||
           (colon != std::string_view::npos && isLetter(name.front())) || name.starts_with(' ') ||
           name.ends_with(' ');
}

bool IsPageName(std::string_view name) {
    const std::string folded = FoldCase(name);
    return folded.ends_with(FoldCase(".html")) || folded.ends_with(FoldCase(".htm"));
}

std::vector<std::string> NoteLines(std::string_view note) {
    std::vector<std::string> lines;
    if (note.empty()) return lines;
    for (;;) {
        const std::size_t end = note.find(kLineEnd);
        lines.emplace_back(note.substr(0, end));
        if (end == std::string_view::npos) return lines;
        note.remove_prefix(end + kLineEnd.size());
    }
}

void AddZoomLines(PageText& page) {
    page.Line("<body onload=\"zoomload();\">");
    page.Line("<script src=\"", kZoomScript, "\"></script>");
    page.Line("<script>");
    page.Line("function zoomload() {");
    page.Line("  var zoomIn  = -100;");
    page.Line("  var zoomOut = 100;");
    page.Line("  images = wheelzoom(document.querySelectorAll('img'), {zoom: 0.1, maxZoom: 10});");
    page.Line("}");
    page.Line("</script>");
}

void AddStyleLink(PageText& page) {
    page.Line(" <link rel=\"stylesheet\" type=\"text/css\" href=\"", kStyleName, "\">");
}

void AddHeadLines(PageText& page, std::string_view version) {
    page.Line("<html>");
    page.Line("<head>");
    page.Line(" <meta http-equiv=\"Content-Type\" content=\"text/html; charset=iso-8859-1\">");
    page.Line(" <meta name=\"author\" content=\"Tarn_View ", version, "\" > ");
}

} // namespace tarn
