// Rows of values that are blurred and looked through.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tarn {

// What is beyond the borders is 0, as the sky is.
class Field {
public:
    Field(int width, int height)
        : m_width(width), m_height(height), m_values(std::size_t(width) * std::size_t(height)),
          m_room(m_values.size()) {}

    float* Row(int y) { return m_values.data() + std::ptrdiff_t(y) * m_width; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    float At(int x, int y) const {
        return m_values[std::size_t(y) * std::size_t(m_width) + std::size_t(x)];
    }
    std::vector<float>& Values() { return m_values; }

    void Blur(const std::vector<float>& kernel) {
        const int reach = int(kernel.size() / 2);
        std::fill(m_room.begin(), m_room.end(), 0.0F);
        for (int y = 0; y < m_height; ++y)
            for (int i = -reach; i <= reach; ++i) {
                const int from = y + i;
                if (from < 0 || from >= m_height) continue;
                Add(Row(from), kernel[std::size_t(i + reach)], 0,
                    m_room.data() + std::ptrdiff_t(y) * m_width);
            }
        std::fill(m_values.begin(), m_values.end(), 0.0F);
        for (int y = 0; y < m_height; ++y)
            for (int i = -reach; i <= reach; ++i)
                Add(m_room.data() + std::ptrdiff_t(y) * m_width, kernel[std::size_t(i + reach)], i,
                    Row(y));
    }

private:
    void Add(const float* from, float weight, int right, float* to) const {
        const int begin = std::max(0, -right);
        const int end = m_width - std::max(0, right);
        for (int x = begin; x < end; ++x) to[x] += weight * from[x + right];
    }

    int m_width;
    int m_height;
    std::vector<float> m_values;
    std::vector<float> m_room;
};

} // namespace tarn
