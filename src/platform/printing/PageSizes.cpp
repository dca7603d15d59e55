#include "platform/printing/PageSizes.h"

#include "platform/QtText.h"

#include <cmath>
#include <optional>
#include <utility>

namespace tarn {

namespace {

constexpr double kMillimetresPerInch = 25.4;

std::optional<QPageSize::PageSizeId> Find(const std::string& paper) {
    for (int id = 0; id <= QPageSize::LastPageSize; ++id) {
        const auto size = static_cast<QPageSize::PageSizeId>(id);
        if (size != QPageSize::Custom &&
            QPageSize::key(size).compare(ToQt(paper), Qt::CaseInsensitive) == 0)
            return size;
    }
    return {};
}

} // namespace

QPageSize PageSizeOf(const std::string& paper) {
    return QPageSize(Find(paper).value_or(QPageSize::A4));
}

bool IsKnownPaper(const std::string& paper) {
    return Find(paper).has_value();
}

// From millimetres: in whole points a sheet of A4 would lose six twips.
PaperSize InTwips(const QPageSize& page, bool landscape) {
    const QSizeF size = page.size(QPageSize::Millimeter);
    const auto twips = [](double millimetres) {
        return std::round(millimetres / kMillimetresPerInch * kTwipsPerInch);
    };
    PaperSize paper{twips(size.width()), twips(size.height())};
    if (landscape) std::swap(paper.width, paper.height);
    return paper;
}

} // namespace tarn
