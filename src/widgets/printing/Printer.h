// One document on its way to paper. Pages are recorded; nothing leaves the program before End.
#pragma once

#include "widgets/printing/PaperOrders.h"

#include <QImage>
#include <QSize>

#include <memory>
#include <string>
#include <string_view>

namespace tarn {

class Files;

// What the user chose to print on.
struct PrinterChoice {
    std::string printer; // the system's name of it; empty: its default
    bool toFile = false; // a PDF file instead
    std::string pdf;     // its path
    std::string paper = "A4";
    bool landscape = false;
    int copies = 1;
};

class Printer {
public:
    virtual ~Printer() = default;

    // Of the paper, not of what can be printed of it.
    virtual PaperSize PageSize() const = 0;

    // The same for every printer and for PDF.
    virtual double TextWidth(const PaperFont& font, std::string_view text) const = 0;
    virtual double LineHeight(const PaperFont& font) const = 0;

    // Most pixels that a picture of this size on paper is worth.
    virtual QSize PixelsFor(double width, double height) const = 0;

    virtual void Text(double x, double y, const PaperFont& font, std::string_view text) = 0;
    virtual void Rule(double x, double y, double toX) = 0;
    virtual void Box(const PaperBox& box) = 0;
    virtual void Picture(const PaperBox& place, const QImage& picture) = 0;
    virtual void NewPage() = 0;

    virtual const std::vector<PaperPage>& Pages() const = 0;

    // Sends the pages; false and why when they did not get there.
    virtual bool End(std::string* error) = 0;

    // Drops them.
    virtual void Kill() = 0;
};

// Where printers come from.
class Printing {
public:
    virtual ~Printing() = default;
    virtual std::unique_ptr<Printer> Open(const PrinterChoice& choice) = 0;
};

std::unique_ptr<Printing> MakePrinting(Files& files);

// A PDF file without margins: written beside its place and renamed into it.
std::unique_ptr<Printer> MakePdfPrinter(Files& files, const PrinterChoice& choice);

// Recorded pages as such a file.
bool WritePdf(Files& files, const std::string& path, PaperSize size,
              const std::vector<PaperPage>& pages, std::string* error);

} // namespace tarn
