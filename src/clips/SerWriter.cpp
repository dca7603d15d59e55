#include "clips/SerWriter.h"

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr std::size_t kRun = std::size_t(16) << 20U; // bytes that are put at once
constexpr std::size_t kCountPlace = 38;              // of the count of frames in the header
constexpr std::size_t kNameBytes = 40;

void AppendNumber(std::string& bytes, std::uint64_t number, int count) {
    for (int i = 0; i < count; ++i) bytes.push_back(char(number >> unsigned(8 * i) & 0xffU));
}

} // namespace

std::string SerHeaderBytes(const SerHeader& header) {
    std::string bytes = "LUCAM-RECORDER";
    for (const int word :
         {0, header.color, 0, header.width, header.height, header.bits, header.frames})
        AppendNumber(bytes, std::uint64_t(word), 4);
    for (std::string name : {header.observer, header.instrument, header.telescope}) {
        name.resize(kNameBytes, ' ');
        bytes += name;
    }
    bytes.resize(std::size_t(kSerHeaderBytes), '\0');
    return bytes;
}

SerWriter::SerWriter(std::string header, std::size_t frameBytes, std::size_t frames, Put put)
    : m_header(std::move(header)), m_frameBytes(frameBytes), m_frames(frames),
      m_put(std::move(put)) {
    std::string count;
    AppendNumber(count, frames, 4);
    m_header.resize(std::size_t(kSerHeaderBytes), '\0');
    m_header.replace(kCountPlace, count.size(), count);
    m_run = m_header;
    m_end = m_header.size();
}

std::size_t SerWriter::PlaceOf(std::size_t frame) const {
    return std::size_t(kSerHeaderBytes) + frame * m_frameBytes;
}

bool SerWriter::Flush() {
    if (m_run.empty()) return true;
    const bool put = m_put(m_at, m_run);
    m_at += m_run.size();
    m_run.clear();
    return put;
}

// What comes ahead of its turn finds room made of nothing, since no file begins in its middle.
bool SerWriter::Add(std::size_t place, std::span<const std::uint8_t> bytes) {
    const std::size_t at = PlaceOf(place);
    while (m_end < at) {
        if (m_at + m_run.size() != m_end) {
            if (!Flush()) return false;
            m_at = m_end;
        }
        const std::size_t gap = std::min(at - m_end, kRun);
        m_run.append(gap, '\0');
        m_end += gap;
        if (m_run.size() >= kRun && !Flush()) return false;
    }
    if (m_at + m_run.size() != at) {
        if (!Flush()) return false;
        m_at = at;
    }
    m_run.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    m_end = std::max(m_end, at + bytes.size());
    return m_run.size() < kRun || Flush();
}

bool SerWriter::Close(const std::vector<std::int64_t>& stamps) {
    if (!Flush()) return false;
    if (stamps.size() != m_frames) return true;
    m_at = PlaceOf(m_frames);
    for (const std::int64_t stamp : stamps) AppendNumber(m_run, std::uint64_t(stamp), 8);
    return Flush();
}

} // namespace tarn
