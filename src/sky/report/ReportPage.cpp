#include "sky/report/NightGraph.h"
#include "sky/report/NightReport.h"

#include <cstdint>

namespace tarn {

namespace {

// The reader's preference chooses light or dark; paper is light.
constexpr char kStyle[] = R"(
:root{color-scheme:light dark;--page:#fff;--ink:#1a1c20;--quiet:#5c6470;--grid:#e2e5ea;--stripe:#f5f6f8;
--day:#f3d99b;--twilight:#8fb4dd;--moon:#8a6d1f;
--s0:#0b62b8;--s1:#c2410c;--s2:#2b7a3d;--s3:#9c2f8f;--s4:#6b5b00}
@media screen and (prefers-color-scheme:dark){:root{--page:#14161a;--ink:#e6e8ec;--quiet:#9aa3b0;--grid:#2c3138;
--stripe:#1b1e23;--day:#6b5a2c;--twilight:#2f527a;--moon:#e0c16a;
--s0:#6db3ff;--s1:#ff9e66;--s2:#7fd394;--s3:#e793dc;--s4:#d9c65c}}
*{box-sizing:border-box}
body{margin:0 auto;max-width:1060px;padding:24px 20px 48px;background:var(--page);color:var(--ink);
font:15px/1.45 system-ui,"Segoe UI",Helvetica,Arial,sans-serif}
h1{font-size:27px;margin:0 0 4px;line-height:1.2}
h2{font-size:20px;margin:36px 0 10px;padding-top:14px;border-top:1px solid var(--grid)}
h3{font-size:15px;margin:22px 0 6px}
.lead{margin:0;color:var(--quiet)}
.wide{overflow-x:auto}
table{border-collapse:collapse;width:100%;font-size:13.5px}
th{color:var(--quiet);font-weight:600;text-align:left;vertical-align:bottom}
th,td{padding:4px 12px 4px 0;border-bottom:1px solid var(--grid);white-space:nowrap}
td.n,th.n{text-align:right;font-variant-numeric:tabular-nums}
tr.total td{font-weight:600;border-bottom:0}
dl{display:grid;grid-template-columns:max-content 1fr;gap:2px 16px;margin:0 0 14px;font-size:14px}
dt{color:var(--quiet)}dd{margin:0;white-space:pre-line;overflow-wrap:anywhere}
svg{display:block;width:100%;height:auto;margin:6px 0 12px}
.pictures{display:flex;flex-wrap:wrap;gap:16px;margin:10px 0}
figure{margin:0;flex:1 1 300px;max-width:480px}
figure img{width:100%;height:auto;display:block;background:#000}
figcaption{font-size:13px;color:var(--quiet);margin-top:4px;overflow-wrap:anywhere}
footer{margin-top:40px;font-size:12.5px;color:var(--quiet)}
@media print{body{max-width:none;padding:0;font-size:10.5pt}h2{break-after:avoid}h3{break-after:avoid}
tr,figure,svg{break-inside:avoid}table{font-size:7.4pt}th,td{padding:2px 5px 2px 0;white-space:normal}td.n{white-space:nowrap}.wide{overflow:visible}@page{margin:14mm}}
)";

GraphColors PageColors() {
    return {"var(--ink)",
            "var(--quiet)",
            "var(--grid)",
            "var(--day)",
            "var(--twilight)",
            "var(--moon)",
            {"var(--s0)", "var(--s1)", "var(--s2)", "var(--s3)", "var(--s4)"}};
}

std::string Base64(const std::string& bytes) {
    constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve(bytes.size() * 4 / 3 + 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t word = 0;
        for (std::size_t k = 0; k < 3; ++k)
            word = word << 8U | (i + k < bytes.size() ? std::uint8_t(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += i + k <= bytes.size() ? kLetters[word >> (18 - 6 * k) & 63U] : '=';
    }
    return text;
}

class PageMaker {
public:
    std::string Make(const NightReport& report, std::span<const ReportFrame> frames,
                     std::span<const ReportNight> nights) {
        m_page =
            "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
            Escaped(report.title) + "</title>\n<style>" + kStyle + GraphStyle(PageColors()) +
            "</style>\n</head>\n<body>\n<h1>" + Escaped(report.title) + "</h1>\n";
        for (const std::string& line : report.lines)
            m_page += "<p class=\"lead\">" + Escaped(line) + "</p>\n";
        for (const ReportTable& table : report.tables) Add(table);
        for (const ReportPart& part : report.parts) {
            m_page += "<h2>" + Escaped(part.title) + "</h2>\n";
            Add(part.facts);
            if (report.graphs) m_page += NightGraph(frames, nights[part.night]) + "\n";
            Add(part.pictures);
            for (const ReportTable& table : part.tables) Add(table);
        }
        AddFacts("Equipment", report.equipment);
        AddFacts("Notes", report.notes);
        if (!report.remarks.empty()) {
            m_page += "<h2>What is missing or contradicts</h2>\n<ul>\n";
            for (const std::string& remark : report.remarks)
                m_page += "<li>" + Escaped(remark) + "</li>\n";
            m_page += "</ul>\n";
        }
        m_page += "<footer>" + Escaped(report.foot) + "</footer>\n</body>\n</html>\n";
        return std::move(m_page);
    }

private:
    void Add(const ReportTable& table) {
        const auto cell = [&](const char* kind, std::size_t column, const std::string& text) {
            m_page += std::string("<") + kind + (column < table.texts ? ">" : " class=\"n\">") +
                      Escaped(text) + "</" + kind + ">";
        };
        m_page += "<h3>" + Escaped(table.title) + "</h3>\n<div class=\"wide\"><table>\n<thead><tr>";
        for (std::size_t i = 0; i < table.heads.size(); ++i) cell("th", i, table.heads[i]);
        m_page += "</tr></thead>\n<tbody>\n";
        for (const auto& row : table.rows) {
            const bool total = table.hasTotal && &row == &table.rows.back();
            m_page += total ? "<tr class=\"total\">" : "<tr>";
            for (std::size_t i = 0; i < row.size(); ++i) cell("td", i, row[i]);
            m_page += "</tr>\n";
        }
        m_page += "</tbody></table></div>\n";
    }

    void Add(const ReportFacts& facts) {
        m_page += "<dl>\n";
        for (const auto& [label, text] : facts)
            m_page += "<dt>" + Escaped(label) + "</dt><dd>" + Escaped(text) + "</dd>\n";
        m_page += "</dl>\n";
    }

    void AddFacts(const char* title, const ReportFacts& facts) {
        if (facts.empty()) return;
        m_page += std::string("<h2>") + title + "</h2>\n";
        Add(facts);
    }

    void Add(const std::vector<ReportPicture>& pictures) {
        if (pictures.empty()) return;
        m_page += "<div class=\"pictures\">\n";
        for (const ReportPicture& picture : pictures) {
            m_page += "<figure>";
            if (!picture.jpeg.empty())
                m_page +=
                    "<img alt=\"\" src=\"data:image/jpeg;base64," + Base64(picture.jpeg) + "\">";
            m_page += "<figcaption>" + Escaped(picture.caption) + "</figcaption></figure>\n";
        }
        m_page += "</div>\n";
    }

    std::string m_page;
};

} // namespace

std::string ReportPage(const NightReport& report, std::span<const ReportFrame> frames,
                       std::span<const ReportNight> nights) {
    return PageMaker().Make(report, frames, nights);
}

} // namespace tarn
