// From stored samples to rows of values: means over squares of pixels, and the first row on top.
#pragma once

#include "common/demosaic.h"
#include "imaging/fits/FitsSamples.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace tarn {

// The rows of one plane of samples as they stand on the screen.
template <typename Sample> class StoredRows {
public:
    StoredRows(const FitsSamples& samples, const Sample* from, int plane)
        : m_header(samples.header), m_count(samples.count), m_from(from),
          m_first(samples.PerPlane() * std::size_t(plane)) {}

    // Counted from the top; the order in the file is another one where it begins at the bottom.
    int StoredRow(int row) const { return m_header.topDown ? row : m_header.height - 1 - row; }
    const Sample* Row(int row) const { return m_from + Begin(row); }

    // How many samples of the row could be read.
    int Count(int row) const {
        const std::size_t begin = Begin(row);
        const std::size_t left = m_count > begin ? m_count - begin : 0;
        return left < std::size_t(Width()) ? int(left) : Width();
    }
    int Width() const { return m_header.width; }
    int Height() const { return m_header.height; }

    bool IsMosaic() const { return m_header.mosaic; }

    // Of a mosaic: which colour the sample has. Else always the first.
    int Colour(int row, int x) const {
        return m_header.pattern[std::size_t(StoredRow(row) % 2 * 2 + x % 2)];
    }

private:
    std::size_t Begin(int row) const {
        return m_first + std::size_t(StoredRow(row)) * std::size_t(Width());
    }

    const FitsHeader& m_header;
    std::size_t m_count;
    const Sample* m_from;
    std::size_t m_first;
};

// Means over squares of `step` pixels a side, one row of squares at a time. For one thread.
template <typename Sample> class Squares {
public:
    Squares(const StoredRows<Sample>& rows, int step)
        : m_rows(rows), m_step(step), m_sums(2 * std::size_t(rows.Width())),
          m_counts(m_sums.size()) {}

    // Row `square` of them for each of the channels; NaN where nothing was read.
    void Row(int square, int width, const std::array<float*, 3>& to, int channels) {
        std::fill(m_sums.begin(), m_sums.end(), 0.0F);
        std::fill(m_counts.begin(), m_counts.end(), 0.0F);
        const int top = Begin(square, m_rows.Height());
        const int bottom = std::min(square * m_step + m_step, m_rows.Height());
        for (int row = top; row < bottom; ++row) Add(row);
        for (int x = 0; x < width; ++x)
            for (int channel = 0; channel < channels; ++channel)
                to[std::size_t(channel)][x] = Mean(x, channel, top);
    }

private:
    // In a mosaic the last ones reach back where the picture ends, so that none lacks a colour.
    int Begin(int square, int length) const {
        return m_rows.IsMosaic() ? std::min(square * m_step, length - 2) : square * m_step;
    }

    // Rows of one parity add up column by column, since their colours are the same.
    void Add(int row) {
        const std::size_t at = std::size_t(m_rows.StoredRow(row) % 2) * std::size_t(m_rows.Width());
        float* sums = m_sums.data() + at;
        float* counts = m_counts.data() + at;
        const Sample* samples = m_rows.Row(row);
        const int count = m_rows.Count(row);
        for (int x = 0; x < count; ++x) {
            const bool valid = IsValue(samples[x]);
            sums[x] += valid ? float(samples[x]) : 0.0F;
            counts[x] += valid ? 1.0F : 0.0F;
        }
    }

    float Mean(int square, int channel, int top) const {
        const int begin = Begin(square, m_rows.Width());
        const int end = std::min(square * m_step + m_step, m_rows.Width());
        float sum = 0;
        float count = 0;
        for (int row = top; row < top + 2 && row < m_rows.Height(); ++row) {
            const std::size_t at =
                std::size_t(m_rows.StoredRow(row) % 2) * std::size_t(m_rows.Width());
            for (int x = begin; x < end; ++x) {
                if (m_rows.Colour(row, x) != channel) continue;
                sum += m_sums[at + std::size_t(x)];
                count += m_counts[at + std::size_t(x)];
            }
        }
        return sum / count; // NaN without any
    }

    const StoredRows<Sample>& m_rows;
    int m_step;
    std::vector<float> m_sums; // of the even stored rows, then of the odd ones
    std::vector<float> m_counts;
};

// As they are stored; NaN where nothing was read.
template <typename Sample> void CopyRow(const StoredRows<Sample>& rows, int row, float* to) {
    const int count = rows.Count(row);
    std::copy(rows.Row(row), rows.Row(row) + count, to);
    std::fill(to + count, to + rows.Width(), std::numeric_limits<float>::quiet_NaN());
}

} // namespace tarn
