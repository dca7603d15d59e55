#include "widgets/printing/PageSizes.h"

#include "platform/QtText.h"

#include <QRegularExpression>

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

// "101.6x152.4mm".
std::optional<QSizeF> Measured(const std::string& paper) {
    static const QRegularExpression form(QStringLiteral("^([0-9.]+)x([0-9.]+)mm$"));
    const auto match = form.match(ToQt(paper));
    const QSizeF size(match.captured(1).toDouble(), match.captured(2).toDouble());
    return size.isEmpty() ? std::nullopt : std::optional(size);
}

} // namespace

QPageSize PageSizeOf(const std::string& paper) {
    const auto named = Find(paper);
    const auto measured = named ? std::nullopt : Measured(paper);
    return measured ? QPageSize(*measured, QPageSize::Millimeter, {}, QPageSize::ExactMatch)
                    : QPageSize(named.value_or(QPageSize::A4));
}

std::string PaperNameOf(const QPageSize& page) {
    std::string key = FromQt(page.key());
    if (Find(key)) return key;
    const QSizeF size = page.size(QPageSize::Millimeter);
    return FromQt(QStringLiteral("%1x%2mm").arg(size.width()).arg(size.height()));
}

bool IsKnownPaper(const std::string& paper) {
    return Find(paper).has_value() || Measured(paper).has_value();
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
