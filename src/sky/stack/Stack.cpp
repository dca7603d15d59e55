#include "sky/stack/Stack.h"

#include "common/worker.h"
#include "sky/stack/Outliers.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <mutex>

namespace tarn {

namespace {

constexpr std::size_t kMostAtOnce = 48;        // frames
constexpr std::size_t kBandBytes = 16U << 20U; // of one thread's codes
constexpr int kMostRows = 256;
constexpr char kDiskErrs[] = "the disk is full or errs";

struct UsedFrame {
    std::size_t place;  // in the series
    std::size_t number; // in the plan
};

// Rows of all frames, and what becomes of them; for one thread.
struct Band {
    Band(std::size_t frames, int rows, int width)
        : samples(std::size_t(rows) * std::size_t(width)), codes(frames * samples),
          lost(frames * samples), mean(samples), weight(samples), sums(samples), weights(samples),
          rejected(frames) {
        for (std::size_t i = 0; i < frames; ++i) {
            codesOf.push_back(codes.data() + i * samples);
            lostOf.push_back(lost.data() + i * samples);
        }
    }

    std::size_t samples;
    std::vector<std::int16_t> codes;
    std::vector<std::uint8_t> lost; // 1 where a colour of a frame is left out
    std::vector<float> mean;
    std::vector<float> weight;
    std::vector<float> sums; // with the parts before
    std::vector<float> weights;
    std::vector<std::int16_t*> codesOf; // the frames
    std::vector<std::uint8_t*> lostOf;
    std::vector<std::size_t> rejected;
};

class Stacking {
public:
    Stacking(const SeriesPlan& plan, const FrameReader& read, const StackOrder& order,
             SumTarget& target)
        : m_plan(plan), m_order(order), m_target(target), m_series(order.scratch, read) {
        m_result.frames.resize(plan.faults.size());
        for (std::size_t i = 0; i < plan.faults.size(); ++i)
            m_result.frames[i].fault = plan.faults[i];
    }

    StackResult Do() {
        if (m_plan.reference)
            m_result.fault = m_series.SetReference(*m_plan.reference);
        else
            m_result.fault = "no frame has stars to align by";
        if (m_result.fault.empty() &&
            !m_target.Begin(m_series.Width(), m_series.Height(), m_series.Colours()))
            m_result.fault = "the sum cannot be written";
        std::string thrown;
        if (m_result.fault.empty()) Guarded(thrown, [&] { return DoParts(), true; });
        if (!thrown.empty()) BreakOff(thrown);
        ShareWeights();
        return m_result;
    }

private:
    void DoParts();
    void BreakOff(const std::string& fault);
    void TakePart(const std::vector<SeriesFrame>& frames, const std::vector<std::string>& faults);
    void TakeRows();
    OutlierRule RuleOf(int colour) const;
    float WeightOf(const UsedFrame& frame, int colour) const;
    bool TakeBand(int row, int rows, std::vector<OutlierMean>& means, Band& band);
    bool TakeColour(int colour, int row, int rows, OutlierMean& mean, Band& band);
    bool AddParts(int colour, int row, std::size_t samples, Band& band);
    void ShareWeights();

    const SeriesPlan& m_plan;
    const StackOrder& m_order;
    SumTarget& m_target;
    WarpedSeries m_series;
    StackResult m_result;
    std::size_t m_parts = 1;
    std::size_t m_part = 0;
    std::vector<UsedFrame> m_used;   // of this part
    std::unique_ptr<Scratch> m_sums; // of several parts
    std::mutex m_mutex;              // of what frames lost
};

// A part has every n-th frame, so that what passes through the field is in few of each.
void Stacking::DoParts() {
    m_parts = (m_plan.frames.size() + kMostAtOnce - 1) / kMostAtOnce;
    if (m_parts > 1) {
        m_sums = std::make_unique<Scratch>(m_order.scratch);
        const std::size_t samples = std::size_t(m_series.Width()) * std::size_t(m_series.Height()) *
                                    std::size_t(m_series.Colours());
        if (!m_sums->IsOpen() || !m_sums->HasRoomFor(2 * samples * sizeof(float)))
            return BreakOff(kDiskErrs);
    }
    for (m_part = 0; m_part < m_parts && m_result.fault.empty(); ++m_part) {
        std::vector<SeriesFrame> frames;
        for (std::size_t i = m_part; i < m_plan.frames.size(); i += m_parts)
            frames.push_back(m_plan.frames[i]);
        std::vector<std::string> faults;
        if (m_series.Make(frames, m_order.watch, faults))
            TakePart(frames, faults);
        else
            BreakOff(m_series.Fault());
    }
    const bool any = std::any_of(m_result.frames.begin(), m_result.frames.end(),
                                 [](const StackedFrame& frame) { return frame.used; });
    if (m_result.fault.empty() && !any) m_result.fault = "no frame could be used";
}

void Stacking::BreakOff(const std::string& fault) {
    m_result.cancelled = fault.empty();
    m_result.fault = fault.empty() ? "cancelled" : fault;
}

void Stacking::TakePart(const std::vector<SeriesFrame>& frames,
                        const std::vector<std::string>& faults) {
    m_used.clear();
    for (std::size_t i = 0; i < frames.size(); ++i) {
        StackedFrame& frame = m_result.frames[frames[i].number];
        frame.fault = faults[i];
        frame.used = faults[i].empty();
        if (frame.used) m_used.push_back({i, frames[i].number});
    }
    TakeRows();
}

float Stacking::WeightOf(const UsedFrame& frame, int colour) const {
    constexpr double kLeastScore = 1;
    const double score = m_plan.scores[frame.number];
    const double noise = m_series.Noise(frame.place, colour);
    double weight = 1;
    if (m_order.weights != FrameWeights::Alike && noise > 0) weight /= noise * noise;
    if (m_order.weights == FrameWeights::Score && std::isfinite(score))
        weight *= std::max(kLeastScore, score) / 100;
    return float(weight);
}

OutlierRule Stacking::RuleOf(int colour) const {
    OutlierRule rule;
    rule.sigmas = m_order.sigmas;
    const SampleCodes& codes = m_series.Codes(colour);
    rule.sky = std::max(0.0F, codes.Sky() / codes.Unit());
    for (const UsedFrame& frame : m_used) {
        rule.weights.push_back(WeightOf(frame, colour));
        rule.noises.push_back(float(m_series.Noise(frame.place, colour)));
    }
    return rule;
}

void Stacking::TakeRows() {
    std::vector<OutlierRule> rules;
    for (int colour = 0; colour < m_series.Colours(); ++colour) {
        rules.push_back(RuleOf(colour));
        for (std::size_t i = 0; i < m_used.size(); ++i)
            m_result.frames[m_used[i].number].weight += rules.back().weights[i];
    }
    constexpr std::size_t kOfSample = sizeof(std::int16_t) + sizeof(std::uint8_t);
    const auto rowBytes = std::size_t(m_series.Width()) * kOfSample * m_used.size();
    const int rows =
        int(std::clamp<std::size_t>(kBandBytes / std::max<std::size_t>(1, rowBytes), 1, kMostRows));
    std::atomic<int> next = 0;
    std::atomic<bool> errs = false;
    const auto work = [&] {
        std::vector<OutlierMean> means(rules.begin(), rules.end());
        Band band(m_used.size(), rows, m_series.Width());
        for (int row = next.fetch_add(rows); row < m_series.Height() && !errs;
             row = next.fetch_add(rows))
            if (m_order.watch.IsCancelled() ||
                !TakeBand(row, std::min(rows, m_series.Height() - row), means, band))
                errs = true;
        const std::lock_guard lock(m_mutex);
        for (std::size_t i = 0; i < m_used.size(); ++i)
            m_result.frames[m_used[i].number].rejected += band.rejected[i];
    };
    const std::string thrown = OnWorkers(WarpedSeries::kThreads, work);
    if (!thrown.empty())
        BreakOff(thrown);
    else if (errs)
        BreakOff(m_order.watch.IsCancelled() ? std::string() : kDiskErrs);
}

bool Stacking::TakeBand(int row, int rows, std::vector<OutlierMean>& means, Band& band) {
    std::fill(band.lost.begin(), band.lost.end(), std::uint8_t(0));
    for (int colour = 0; colour < m_series.Colours(); ++colour)
        if (!TakeColour(colour, row, rows, means[std::size_t(colour)], band)) return false;
    for (std::size_t i = 0; i < m_used.size(); ++i)
        band.rejected[i] +=
            std::size_t(std::count(band.lostOf[i], band.lostOf[i] + band.samples, std::uint8_t(1)));
    return true;
}

bool Stacking::TakeColour(int colour, int row, int rows, OutlierMean& mean, Band& band) {
    const auto width = std::size_t(m_series.Width());
    for (std::size_t i = 0; i < m_used.size(); ++i)
        if (!m_series.Read(m_used[i].place, colour, row, rows, band.codesOf[i])) return false;
    const std::size_t samples = std::size_t(rows) * width;
    mean.Take(band.codesOf, int(samples), band.mean.data(), band.weight.data(), band.lostOf);
    if (m_parts > 1 && !AddParts(colour, row, samples, band)) return false;
    if (m_part + 1 < m_parts) return true;
    const SampleCodes& codes = m_series.Codes(colour);
    for (std::size_t i = 0; i < samples; ++i)
        band.mean[i] = band.weight[i] > 0 ? codes.Sky() + codes.Unit() * band.mean[i]
                                          : std::numeric_limits<float>::quiet_NaN();
    return m_target.Write(colour, row, rows, band.mean.data());
}

// Sums of mean times weight, and the weights behind them, wait on the disk for the next part.
bool Stacking::AddParts(int colour, int row, std::size_t samples, Band& band) {
    const auto grid = std::size_t(m_series.Width()) * std::size_t(m_series.Height());
    const std::size_t at =
        (std::size_t(colour) * grid + std::size_t(row) * std::size_t(m_series.Width())) *
        sizeof(float);
    const std::size_t weightsAt = at + std::size_t(m_series.Colours()) * grid * sizeof(float);
    const std::size_t bytes = samples * sizeof(float);
    if (m_part == 0) {
        std::fill_n(band.sums.begin(), samples, 0.0F);
        std::fill_n(band.weights.begin(), samples, 0.0F);
    } else if (!m_sums->Read(at, band.sums.data(), bytes) ||
               !m_sums->Read(weightsAt, band.weights.data(), bytes)) {
        return false;
    }
    for (std::size_t i = 0; i < samples; ++i) {
        band.sums[i] += band.mean[i] * band.weight[i];
        band.weights[i] += band.weight[i];
    }
    if (m_part + 1 < m_parts)
        return m_sums->Write(at, band.sums.data(), bytes) &&
               m_sums->Write(weightsAt, band.weights.data(), bytes);
    for (std::size_t i = 0; i < samples; ++i)
        band.mean[i] = band.weights[i] > 0 ? band.sums[i] / band.weights[i] : 0;
    band.weight.assign(band.weights.begin(), band.weights.end());
    return true;
}

void Stacking::ShareWeights() {
    double all = 0;
    for (const StackedFrame& frame : m_result.frames) all += frame.weight;
    for (StackedFrame& frame : m_result.frames)
        if (all > 0) frame.weight /= all;
}

} // namespace

StackResult StackSeries(const SeriesPlan& plan, const FrameReader& read, const StackOrder& order,
                        SumTarget& target) {
    return Stacking(plan, read, order, target).Do();
}

} // namespace tarn
