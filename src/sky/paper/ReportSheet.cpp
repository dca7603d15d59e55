#include "sky/paper/ReportSheet.h"

#include "common/text.h"
#include "sky/report/NightGraph.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

namespace tarn {

namespace {

// Twips.
constexpr double kMargin = 850;
constexpr double kFootRoom = 500;
constexpr double kColumnGap = 160;
constexpr double kAfterTable = 220;
constexpr double kLabelWidth = 1900;
constexpr double kPictureGap = 300;
constexpr double kPictureHeight = 3600;

const PaperFont kTitle{"Arial", 18, true};
const PaperFont kHeading{"Arial", 13, true};
const PaperFont kSubheading{"Arial", 9.5, true};
const PaperFont kText{"Arial", 9};
const PaperFont kSmall{"Arial", 7.5};

GraphColors PaperColors() {
    return {"#1a1c20",
            "#5c6470",
            "#e2e5ea",
            "#f3d99b",
            "#8fb4dd",
            "#8a6d1f",
            {"#0b62b8", "#c2410c", "#2b7a3d", "#9c2f8f", "#6b5b00"}};
}

class SheetMaker {
public:
    explicit SheetMaker(Printer& printer)
        : m_printer(printer), m_width(printer.PageSize().width - 2 * kMargin),
          m_bottom(printer.PageSize().height - kMargin - kFootRoom) {}

    void Make(const NightReport& report, std::span<const ReportFrame> frames,
              std::span<const ReportNight> nights) {
        m_foot = report.foot;
        Line(kTitle, report.title);
        for (const std::string& line : report.lines) Line(kText, line);
        m_y += kAfterTable;
        for (const ReportTable& table : report.tables) Add(table);
        for (const ReportPart& part : report.parts) {
            Heading(part.title);
            Add(part.facts);
            if (report.graphs) AddGraph(frames, nights[part.night]);
            Add(part.pictures);
            for (const ReportTable& table : part.tables) Add(table);
        }
        AddFacts("Equipment", report.equipment);
        AddFacts("Notes", report.notes);
        if (!report.remarks.empty()) Heading("What is missing or contradicts");
        for (const std::string& remark : report.remarks) Paragraph(kMargin, m_width, remark);
        Foot();
    }

private:
    void Foot() {
        const double y = m_printer.PageSize().height - kMargin;
        m_printer.Text(kMargin, y, kSmall, m_foot);
        const std::string page = "Page " + std::to_string(m_printer.Pages().size());
        m_printer.Text(kMargin + m_width - m_printer.TextWidth(kSmall, page), y, kSmall, page);
    }

    // So much stays together.
    void Need(double height) {
        if (m_y + height <= m_bottom || m_y <= kMargin) return;
        Foot();
        m_printer.NewPage();
        m_y = kMargin;
    }

    void Line(const PaperFont& font, const std::string& text) {
        const double height = m_printer.LineHeight(font);
        Need(height);
        m_printer.Text(kMargin, m_y, font, Fitted(font, text, m_width));
        m_y += height;
    }

    void Heading(const std::string& text) {
        constexpr double kBefore = 300;
        constexpr double kWithIt = 1500; // that is not parted from it
        Need(kBefore + kWithIt);
        if (m_y > kMargin) m_y += kBefore;
        Line(kHeading, text);
        m_printer.Rule(kMargin, m_y + 40, kMargin + m_width);
        m_y += 140;
    }

    std::string Fitted(const PaperFont& font, const std::string& text, double width) const {
        if (m_printer.TextWidth(font, text) <= width) return text;
        for (int length = Length(text) - 1; length > 0; --length) {
            std::string cut = std::string(LeftChars(text, length)) + "…";
            if (m_printer.TextWidth(font, cut) <= width) return cut;
        }
        return {};
    }

    // Broken between words.
    void Paragraph(double x, double width, const std::string& text) {
        const double height = m_printer.LineHeight(kText);
        const auto put = [&](const std::string& line) {
            Need(height);
            m_printer.Text(x, m_y, kText, Fitted(kText, line, width));
            m_y += height;
        };
        for (std::string part : Split(text, '\n')) {
            std::erase(part, '\r');
            std::string line;
            for (const std::string& word : Split(part, ' ')) {
                const std::string longer = line.empty() ? word : line + " " + word;
                if (!line.empty() && m_printer.TextWidth(kText, longer) > width) {
                    put(line);
                    line = word;
                } else {
                    line = longer;
                }
            }
            put(line);
        }
    }

    void Add(const ReportFacts& facts) {
        for (const auto& [label, text] : facts) {
            Need(m_printer.LineHeight(kText));
            m_printer.Text(kMargin, m_y, kText, Fitted(kText, label, kLabelWidth - kColumnGap));
            Paragraph(kMargin + kLabelWidth, m_width - kLabelWidth, text);
        }
        m_y += kAfterTable / 2;
    }

    void AddFacts(const char* title, const ReportFacts& facts) {
        if (facts.empty()) return;
        Heading(title);
        Add(facts);
    }

    // Of each column; the texts give way where all is too wide.
    std::vector<double> WidthsOf(const ReportTable& table) const {
        std::vector<double> widths;
        PaperFont bold = kSmall;
        bold.bold = true;
        double all = 0;
        for (std::size_t i = 0; i < table.heads.size(); ++i) {
            double width = m_printer.TextWidth(bold, table.heads[i]);
            for (const auto& row : table.rows)
                width = std::max(width, m_printer.TextWidth(bold, row[i]));
            widths.push_back(width + kColumnGap);
            all += widths.back();
        }
        double texts = 0;
        for (std::size_t i = 0; i < table.texts && i < widths.size(); ++i) texts += widths[i];
        const double share = (texts + m_width - all) / texts;
        if (share < 1)
            for (std::size_t i = 0; i < table.texts && i < widths.size(); ++i)
                widths[i] *= std::max(share, 0.2);
        return widths;
    }

    void Add(const ReportTable& table) {
        const std::vector<double> widths = WidthsOf(table);
        const double height = m_printer.LineHeight(kSmall) * 1.15;
        Need(m_printer.LineHeight(kSubheading) + 3 * height);
        Line(kSubheading, table.title);
        m_y += 40;
        Row(table, widths, table.heads, true);
        m_printer.Rule(kMargin, m_y, kMargin + m_width);
        m_y += 20;
        for (const auto& row : table.rows) {
            Need(height);
            const bool total = table.hasTotal && &row == &table.rows.back();
            if (total) m_printer.Rule(kMargin, m_y, kMargin + m_width);
            Row(table, widths, row, total);
        }
        m_y += kAfterTable;
    }

    void Row(const ReportTable& table, const std::vector<double>& widths,
             const std::vector<std::string>& row, bool bold) {
        PaperFont font = kSmall;
        font.bold = bold;
        double x = kMargin;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const double room = widths[i] - kColumnGap;
            const std::string text = Fitted(font, row[i], std::max(room, 1.0));
            const double indent =
                i < table.texts ? 0 : std::max(0.0, room - m_printer.TextWidth(font, text));
            m_printer.Text(x + indent, m_y, font, text);
            x += widths[i];
        }
        m_y += m_printer.LineHeight(font) * 1.15;
    }

    void AddGraph(std::span<const ReportFrame> frames, const ReportNight& night) {
        double units = 0;
        const std::string drawing = NightGraphFile(frames, night, PaperColors(), units);
        if (drawing.empty()) return;
        double width = m_width;
        double height = width * units / kGraphWidth;
        const double room = m_bottom - kMargin;
        if (height > room) {
            width *= room / height;
            height = room;
        }
        Need(height);
        QImage image(m_printer.PixelsFor(width, height), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        QSvgRenderer renderer(QByteArray(drawing.data(), qsizetype(drawing.size())));
        renderer.render(&painter);
        painter.end();
        m_printer.Picture({kMargin, m_y, width, height}, image);
        m_y += height + kAfterTable;
    }

    void Add(const std::vector<ReportPicture>& pictures) {
        if (pictures.empty()) return;
        const double width = (m_width - kPictureGap) / 2;
        Need(kPictureHeight + m_printer.LineHeight(kSmall));
        double x = kMargin;
        double lowest = 0;
        for (const ReportPicture& picture : pictures) {
            const QImage image = QImage::fromData(
                reinterpret_cast<const uchar*>(picture.jpeg.data()), int(picture.jpeg.size()));
            double high = 0;
            if (!image.isNull()) {
                const double by = std::min(width / image.width(), kPictureHeight / image.height());
                high = by * image.height();
                m_printer.Picture({x, m_y, by * image.width(), high}, image);
            }
            m_printer.Text(x, m_y + high + 40, kSmall, Fitted(kSmall, picture.caption, width));
            lowest = std::max(lowest, high);
            x += width + kPictureGap;
        }
        m_y += lowest + 40 + m_printer.LineHeight(kSmall) + kAfterTable;
    }

    Printer& m_printer;
    const double m_width;
    const double m_bottom;
    double m_y = kMargin;
    std::string m_foot;
};

} // namespace

void PrintReport(Printer& printer, const NightReport& report, std::span<const ReportFrame> frames,
                 std::span<const ReportNight> nights) {
    SheetMaker(printer).Make(report, frames, nights);
}

} // namespace tarn
