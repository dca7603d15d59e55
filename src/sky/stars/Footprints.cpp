#include "sky/stars/Footprints.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

namespace tarn {

namespace {

constexpr int kBlock = 32;           // samples that are looked at together
constexpr int kRowsOfThreshold = 8;  // rows for which one row of thresholds serves
constexpr int kSharpRows = 1000;     // that are enough for the sharpness
constexpr std::size_t kMostPart = 2; // one of so many samples may stand above the sky

// The plane's rows smoothed, one after the other; beyond its border it goes on as at it.
class SmoothRows {
public:
    explicit SmoothRows(const ValuePlane& plane)
        : m_plane(plane), m_column(std::size_t(plane.width) + 2) {
        for (std::vector<float>& row : m_raw) row.resize(std::size_t(plane.width));
        plane.Row(0, m_raw[0].data());
        m_raw[2] = m_raw[0];
        if (plane.height > 1)
            plane.Row(1, m_raw[1].data());
        else
            m_raw[1] = m_raw[0];
    }

    void Next(float* to) {
        const int width = m_plane.width;
        const float* above = m_raw[std::size_t(m_y + 2) % 3].data();
        const float* here = m_raw[std::size_t(m_y) % 3].data();
        const float* below = m_raw[std::size_t(m_y + 1) % 3].data();
        float* column = m_column.data() + 1;
        for (int x = 0; x < width; ++x)
            column[x] = 0.0625F * (above[x] + below[x]) + 0.125F * here[x];
        column[-1] = column[0];
        column[width] = column[width - 1];
        for (int x = 0; x < width; ++x) to[x] = column[x - 1] + column[x + 1] + 2 * column[x];
        ++m_y;
        std::vector<float>& next = m_raw[std::size_t(m_y + 1) % 3];
        if (m_y + 1 < m_plane.height)
            m_plane.Row(m_y + 1, next.data());
        else
            next = m_raw[std::size_t(m_y) % 3];
    }

private:
    const ValuePlane& m_plane;
    int m_y = 0;
    std::array<std::vector<float>, 3> m_raw;
    std::vector<float> m_column;
};

class Sharpness {
public:
    void Add(const float* above, const float* here, const float* below, int width) {
        constexpr std::size_t kLanes = 8;
        std::array<float, kLanes> energy{};
        std::array<float, kLanes> square{};
        int x = 1;
        for (; x + int(kLanes) < width; x += int(kLanes))
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                const float* at = here + x + lane;
                const float along = at[1] - at[-1];
                const float across = below[std::size_t(x) + lane] - above[std::size_t(x) + lane];
                energy[lane] += along * along + across * across;
                square[lane] += at[0] * at[0];
            }
        const double sum = std::accumulate(energy.begin(), energy.end(), 0.0);
        const double squares = std::accumulate(square.begin(), square.end(), 0.0);
        if (std::isfinite(sum) && std::isfinite(squares)) {
            m_energy += sum / 4; // of differences over two samples
            m_square += squares;
        } else {
            x = 1;
        }
        for (; x + 1 < width; ++x) {
            const double along = here[x + 1] - here[x - 1];
            const double across = below[x] - above[x];
            const double energyHere = (along * along + across * across) / 4;
            if (!std::isfinite(energyHere) || !std::isfinite(here[x])) continue;
            m_energy += energyHere;
            m_square += double(here[x]) * here[x];
        }
    }
    double Value() const {
        return m_square > 0 ? m_energy / m_square : std::numeric_limits<double>::quiet_NaN();
    }

private:
    double m_energy = 0;
    double m_square = 0;
};

// Joins runs that touch, row by row.
class RunJoiner {
public:
    void Add(const FootprintRun& run) {
        const std::size_t here = m_runs.size();
        m_runs.push_back(run);
        m_parent.push_back(here);
        if (run.y != m_row) {
            m_aboveBegin = run.y == m_row + 1 ? m_rowBegin : here;
            m_aboveEnd = here;
            m_rowBegin = here;
            m_row = run.y;
        }
        while (m_aboveBegin < m_aboveEnd && m_runs[m_aboveBegin].end < run.begin) ++m_aboveBegin;
        for (std::size_t at = m_aboveBegin; at < m_aboveEnd && m_runs[at].begin <= run.end; ++at)
            m_parent[Root(here)] = Root(at);
    }

    void PutInto(Footprints& to) {
        std::vector<std::size_t> number(m_runs.size());
        const std::size_t none = m_runs.size(); // footprints are never as many
        std::vector<std::size_t> ofRoot(m_runs.size(), none + 1);
        for (std::size_t run = 0; run < m_runs.size(); ++run) {
            std::size_t& known = ofRoot[Root(run)];
            if (known > none) {
                known = to.all.size();
                const FootprintRun& first = m_runs[run];
                to.all.push_back(
                    {.left = first.begin, .top = first.y, .right = first.begin, .bottom = first.y});
            }
            number[run] = known;
            Widen(to.all[known], m_runs[run]);
        }
        std::size_t begin = 0;
        for (Footprint& footprint : to.all) {
            footprint.firstRun = begin;
            begin += footprint.runs;
            footprint.runs = 0;
        }
        to.runs.resize(m_runs.size());
        for (std::size_t run = 0; run < m_runs.size(); ++run) {
            Footprint& footprint = to.all[number[run]];
            to.runs[footprint.firstRun + footprint.runs++] = m_runs[run];
        }
    }

private:
    static void Widen(Footprint& footprint, const FootprintRun& run) {
        ++footprint.runs;
        footprint.samples += std::size_t(run.end - run.begin);
        footprint.left = std::min(footprint.left, run.begin);
        footprint.right = std::max(footprint.right, run.end - 1);
        footprint.bottom = run.y;
    }
    std::size_t Root(std::size_t run) {
        while (m_parent[run] != run) {
            m_parent[run] = m_parent[m_parent[run]];
            run = m_parent[run];
        }
        return run;
    }

    std::vector<FootprintRun> m_runs;
    std::vector<std::size_t> m_parent;
    int m_row = -2;
    std::size_t m_rowBegin = 0;
    std::size_t m_aboveBegin = 0;
    std::size_t m_aboveEnd = 0;
};

bool IsAnyAbove(const float* values, const float* thresholds, int count) {
    if (count < kBlock)
        return std::inner_product(values, values + count, thresholds, false, std::logical_or<>(),
                                  std::greater<>());
    int above = 0;
    for (int i = 0; i < kBlock; ++i) above |= int(values[i] > thresholds[i]);
    return above != 0;
}

void FindRuns(const float* values, const float* thresholds, int width, int y, RunJoiner& joiner,
              std::vector<float>& kept) {
    int x = 0;
    while (x < width) {
        const int count = std::min(kBlock, width - x);
        if (!IsAnyAbove(values + x, thresholds + x, count)) {
            x += count;
            continue;
        }
        const int end = x + count;
        while (x < end) {
            if (!(values[x] > thresholds[x])) {
                ++x;
                continue;
            }
            const int begin = x;
            while (x < width && values[x] > thresholds[x]) ++x;
            joiner.Add({y, begin, x, kept.size()});
            kept.insert(kept.end(), values + begin, values + x);
        }
    }
}

} // namespace

Footprints FindFootprints(const ValuePlane& plane, const SkyMesh& sky, float sigmas) {
    Footprints found;
    const int width = plane.width;
    SmoothRows rows(plane);
    RunJoiner joiner;
    Sharpness sharpness;
    std::array<std::vector<float>, 3> smooth;
    for (std::vector<float>& row : smooth) row.resize(std::size_t(width));
    std::vector<float> thresholds(smooth[0].size());
    const int sharpStep = std::max(1, plane.height / kSharpRows);
    for (int y = 0; y < plane.height; ++y) {
        float* const here = smooth[std::size_t(y) % 3].data();
        rows.Next(here);
        if (y >= 2 && (y - 1) % sharpStep == 0)
            sharpness.Add(smooth[std::size_t(y + 1) % 3].data(),
                          smooth[std::size_t(y + 2) % 3].data(), here, width);
        if (found.tooMuch) continue;
        if (y % kRowsOfThreshold == 0)
            sky.Row(std::min(y + kRowsOfThreshold / 2, plane.height - 1), sigmas * sky.NoiseLeft(),
                    thresholds.data());
        FindRuns(here, thresholds.data(), width, y, joiner, found.values);
        found.tooMuch = found.values.size() > plane.Samples() / kMostPart;
    }
    if (!found.tooMuch) joiner.PutInto(found);
    found.sharpness = sharpness.Value();
    return found;
}

} // namespace tarn
