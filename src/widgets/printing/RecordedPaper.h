// The part that all printers share: the orders as recorded, and how wide and high text is.
#pragma once

#include "widgets/printing/Printer.h"

namespace tarn {

class RecordedPaper : public Printer {
public:
    // Of the page as it lies, and the dots an inch that pictures are worth.
    RecordedPaper(PaperSize size, int pictureDpi) : m_size(size), m_pictureDpi(pictureDpi) {}

    PaperSize PageSize() const override { return m_size; }
    double TextWidth(const PaperFont& font, std::string_view text) const override;
    double LineHeight(const PaperFont& font) const override;
    QSize PixelsFor(double width, double height) const override;
    void Text(double x, double y, const PaperFont& font, std::string_view text) override;
    void Rule(double x, double y, double toX) override;
    void Box(const PaperBox& box) override;
    void Picture(const PaperBox& place, const QImage& picture) override;
    void NewPage() override { m_pages.emplace_back(); }
    const std::vector<PaperPage>& Pages() const override { return m_pages; }
    void Kill() override { m_pages.assign(1, {}); }

private:
    PaperSize m_size;
    int m_pictureDpi;
    std::vector<PaperPage> m_pages{1};
};

} // namespace tarn
