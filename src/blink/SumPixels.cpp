#include "blink/SumPixels.h"

#include <algorithm>

#include <fcntl.h>
#include <sys/mman.h>

namespace tarn {

SumPixels::~SumPixels() {
    if (m_values) ::munmap(m_values, Bytes());
}

std::size_t SumPixels::Bytes() const {
    return std::size_t(m_width) * std::size_t(m_height) * std::size_t(m_colours) * sizeof(float);
}

// All of it is set aside: a page that the disk has no room for would end the program.
bool SumPixels::Begin(int width, int height, int colours) {
    m_width = width;
    m_height = height;
    m_colours = colours;
    if (!m_file.IsOpen() || ::posix_fallocate(m_file.Number(), 0, off_t(Bytes())) != 0)
        return false;
    void* const values =
        ::mmap(nullptr, Bytes(), PROT_READ | PROT_WRITE, MAP_SHARED, m_file.Number(), 0);
    if (values != MAP_FAILED) m_values = static_cast<float*>(values);
    return m_values != nullptr;
}

bool SumPixels::Write(int colour, int row, int rows, const float* values) {
    const auto perRow = std::size_t(m_width);
    const std::size_t at =
        (std::size_t(colour) * std::size_t(m_height) + std::size_t(row)) * perRow;
    std::copy_n(values, perRow * std::size_t(rows), m_values + at);
    return true;
}

FrameSamples SumPixels::Samples() const {
    FrameSamples samples;
    samples.width = m_width;
    samples.height = m_height;
    samples.planes = m_colours;
    samples.floats = m_values;
    samples.kept = shared_from_this();
    return samples;
}

bool SumPixels::WriteInto(SumTarget& to) const {
    constexpr int kRows = 64;
    if (!to.Begin(m_width, m_height, m_colours)) return false;
    for (int colour = 0; colour < m_colours; ++colour)
        for (int row = 0; row < m_height; row += kRows) {
            const std::size_t at =
                (std::size_t(colour) * std::size_t(m_height) + std::size_t(row)) *
                std::size_t(m_width);
            if (!to.Write(colour, row, std::min(kRows, m_height - row), m_values + at))
                return false;
        }
    return true;
}

} // namespace tarn
