#include "imaging/fits/ScreenStretch.h"

#include <algorithm>
#include <mutex>

namespace tarn {

namespace {

constexpr double kSkyLight = 0.25;   // where the median of the sky goes
constexpr double kBelowSky = 2.8;    // deviations below it that are still seen
constexpr double kLeastWidth = 1e-6; // from shadows to highlights
constexpr double kLeastMidtones = 1e-6;
constexpr double kMostGain = 4; // more is no sky but a picture of one colour
constexpr float kWhite = 255;

double Normalised(const ValueRange& range, double value) {
    return (value - range.low) / (range.high - range.low);
}

thread_local int automaticOnly = 0; // how many live

std::mutex& Guard() {
    static std::mutex mutex;
    return mutex;
}

StretchChoice& Chosen() {
    static StretchChoice choice;
    return choice;
}

std::int64_t& Generation() {
    static std::int64_t generation = 0;
    return generation;
}

} // namespace

double MidtoneCurve(double midtones, double x) {
    if (x <= 0) return 0;
    if (x >= 1) return 1;
    return (midtones - 1) * x / ((2 * midtones - 1) * x - midtones);
}

Stretch AutomaticStretch(const ValueRange& range, std::span<const ChannelStatistics> channels) {
    Stretch stretch{range};
    const double width = range.high - range.low;
    double median = 0;
    for (const ChannelStatistics& each : channels)
        median += Normalised(range, each.median) / double(channels.size());
    double deviation = 0;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const double own = Normalised(range, channels[i].median);
        if (own > 0 && median > 0)
            stretch.gain[i] = std::clamp(median / own, 1 / kMostGain, kMostGain);
        deviation += channels[i].deviation / width * stretch.gain[i] / double(channels.size());
    }
    // A picture without noise, or without a sky, is only bent.
    const double below = deviation > 0 ? median - kBelowSky * deviation : 0;
    stretch.shadows = std::clamp(below, 0.0, 1 - kLeastWidth);
    const double sky = (median - stretch.shadows) / (1 - stretch.shadows);
    if (sky > 0 && sky < 1)
        stretch.midtones = std::max(MidtoneCurve(kSkyLight, sky), kLeastMidtones);
    return stretch;
}

Stretch LinearStretch(const ValueRange& range) {
    return Stretch{range};
}

ToLight::ToLight(const Stretch& stretch, std::size_t channel) {
    const double all = stretch.range.high - stretch.range.low;
    const double width = std::max(stretch.highlights - stretch.shadows, kLeastWidth);
    const double gain = stretch.gain[channel];
    const double midtones = std::clamp(stretch.midtones, kLeastMidtones, 1 - kLeastMidtones);
    m_slope = float(gain / all / width);
    m_start = float((-stretch.range.low / all * gain - stretch.shadows) / width);
    m_over = float((1 - midtones) * kWhite);
    m_under = float(1 - 2 * midtones);
    m_base = float(midtones);
}

bool StretchChoice::IsFixedFor(const StretchedFile& file) const {
    const bool own = file.device == of.device && file.inode == of.inode;
    return fixed && (own || (locked && file.IsSeriesOf(of)));
}

Stretch StretchChoice::For(const StretchedFile& file, const Stretch& automatic,
                           const Stretch& straight) const {
    if (linear) return locked && IsFixedFor(file) ? LinearStretch(fixed->range) : straight;
    return IsFixedFor(file) ? *fixed : automatic;
}

AutomaticStretchOnly::AutomaticStretchOnly() {
    ++automaticOnly;
}

AutomaticStretchOnly::~AutomaticStretchOnly() {
    --automaticOnly;
}

bool IsAutomaticOnly() {
    return automaticOnly > 0;
}

StretchChoice CurrentStretchChoice() {
    if (IsAutomaticOnly()) return {};
    const std::lock_guard lock(Guard());
    return Chosen();
}

void SetStretchChoice(const StretchChoice& choice) {
    const std::lock_guard lock(Guard());
    if (Chosen() == choice) return;
    Chosen() = choice;
    ++Generation();
}

std::int64_t StretchGeneration() {
    const std::lock_guard lock(Guard());
    return Generation();
}

} // namespace tarn
