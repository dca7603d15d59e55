// Orders of a page, looked up by what stands there.
#pragma once

#include "platform/Files.h"
#include "widgets/printing/Printer.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace tarn::testing {

template <typename Order> std::vector<Order> All(const PaperPage& page) {
    std::vector<Order> found;
    for (const PaperOrder& each : page)
        if (const auto* order = std::get_if<Order>(&each)) found.push_back(*order);
    return found;
}

// "x,y" of the text in whole twips, "none" when it does not stand there.
inline std::string PlaceOf(const PaperPage& page, const std::string& text) {
    for (const PaperText& each : All<PaperText>(page))
        if (each.text == text)
            return std::to_string(std::lround(each.x)) + "," + std::to_string(std::lround(each.y));
    return "none";
}

inline std::string Place(const PaperBox& box) {
    std::string text;
    for (const double value : {box.x, box.y, box.width, box.height})
        text += (text.empty() ? "" : " ") + std::to_string(std::lround(value));
    return text;
}

// A printer of A4 pages that writes no file until it is asked to.
struct Paper {
    std::unique_ptr<Files> files = MakeFiles();
    std::unique_ptr<Printer> printer;
    explicit Paper(const std::string& pdf = {}, const std::string& size = "A4",
                   bool landscape = false) {
        printer = MakePdfPrinter(*files, {{}, true, pdf, size, landscape, 1});
    }
    const PaperPage& Page(std::size_t page = 0) const { return printer->Pages().at(page); }
    double Line(double points, bool bold = false) const {
        return printer->LineHeight({"Arial", points, bold});
    }
};

} // namespace tarn::testing
