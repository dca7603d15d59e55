#include "clips/SerFile.h"

#include "common/demosaic.h"
#include "platform/OpenRegular.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>

namespace tarn {

namespace {

constexpr std::string_view kMark = "LUCAM-RECORDER";
constexpr std::uint64_t kMostPixels = 100'000'000;
constexpr int kMostSide = 65535;       // pixels
constexpr int kMostFrames = 4'320'000; // two hours of the fastest cameras
constexpr double kTicks = 1e7;         // of a time, in a second
constexpr std::size_t kTextBytes = 40; // of each name in the header
constexpr std::size_t kTimeBytes = 8;

std::uint32_t Number(const std::uint8_t* bytes) {
    return std::uint32_t(bytes[0]) | std::uint32_t(bytes[1]) << 8 | std::uint32_t(bytes[2]) << 16 |
           std::uint32_t(bytes[3]) << 24;
}

std::int64_t Ticks(const std::uint8_t* bytes) {
    return std::int64_t(std::uint64_t(Number(bytes)) | std::uint64_t(Number(bytes + 4)) << 32);
}

std::string TextAt(const std::uint8_t* bytes) {
    std::string text(reinterpret_cast<const char*>(bytes), kTextBytes);
    text.resize(std::min(text.find('\0'), text.size()));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

// How much neighbours differ when the bytes are read in this order: noise is what is wrong.
std::uint64_t Roughness(const std::vector<std::uint8_t>& frame, std::size_t high, int step) {
    std::uint64_t sum = 0;
    const std::size_t ahead = 2 * std::size_t(step);
    for (std::size_t i = 0; i + ahead + 1 < frame.size(); i += 2) {
        const int here = frame[i + high] << 8 | frame[i + 1 - high];
        const int next = frame[i + ahead + high] << 8 | frame[i + ahead + 1 - high];
        sum += std::uint64_t(std::abs(here - next));
    }
    return sum;
}

// The samples of a frame under a Bayer pattern.
class BayerRows {
public:
    BayerRows(const SerHeader& header, const std::vector<std::uint16_t>& samples)
        : m_width(header.width), m_height(header.height), m_samples(samples.data()),
          m_shift(header.color - SerHeader::Rggb) {}

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int Count(int) const { return m_width; }
    const std::uint16_t* Row(int y) const {
        return m_samples + std::size_t(y) * std::size_t(m_width);
    }
    // 0 red, 1 green, 2 blue; in Rggb red stands top left, the others are shifted.
    int Colour(int y, int x) const { return (x + m_shift % 2) % 2 + (y + m_shift / 2) % 2; }

private:
    int m_width;
    int m_height;
    const std::uint16_t* m_samples;
    int m_shift;
};

// A colour that no neighbour has is black.
void FillIn(const BayerRows& rows, std::uint16_t* colors) {
    const auto width = std::size_t(rows.Width());
    std::vector<float> values(3 * width);
    const std::array<float*, 3> row{&values[0], &values[width], &values[2 * width]};
    for (int y = 0; y < rows.Height(); ++y) {
        DemosaicRow(rows, y, row);
        for (std::size_t x = 0; x < width; ++x)
            for (const float* color : row)
                *colors++ = std::isnan(color[x]) ? 0 : std::uint16_t(color[x]);
    }
}

} // namespace

bool IsSer(const std::string& start) {
    return start.starts_with(kMark);
}

bool SerFile::ReadAt(std::int64_t place, void* bytes, std::size_t count) {
    return ::fseeko(m_file.get(), place, SEEK_SET) == 0 &&
           std::fread(bytes, 1, count, m_file.get()) == count;
}

std::string SerFile::Open(const std::string& path) {
    m_header = {};
    m_orderKnown = false;
    std::string error;
    m_file = OpenRegular(path, error);
    if (!m_file) return error;
    std::array<std::uint8_t, std::size_t(kSerHeaderBytes)> bytes{};
    if (!ReadAt(0, bytes.data(), bytes.size()) ||
        std::memcmp(bytes.data(), kMark.data(), kMark.size()) != 0)
        return "Not a SER file";
    m_headerBytes.assign(bytes.begin(), bytes.end());
    SerHeader& h = m_header;
    h.color = int(Number(&bytes[18]));
    const std::uint32_t width = Number(&bytes[26]);
    const std::uint32_t height = Number(&bytes[30]);
    const std::uint32_t bits = Number(&bytes[34]);
    const std::uint32_t frames = Number(&bytes[38]);
    if (width < 1 || height < 1 || width > kMostSide || height > kMostSide)
        return "The size of the frames is wrong";
    if (std::uint64_t(width) * height > kMostPixels) return "The frames are too large";
    if (bits < 1 || bits > 16) return "The depth of the pixels is wrong";
    h.width = int(width);
    h.height = int(height);
    h.bits = int(bits);
    h.observer = TextAt(&bytes[42]);
    h.instrument = TextAt(&bytes[82]);
    h.telescope = TextAt(&bytes[122]);
    if (::fseeko(m_file.get(), 0, SEEK_END) != 0) return std::strerror(errno);
    const std::int64_t held = (::ftello(m_file.get()) - kSerHeaderBytes) / h.FrameBytes();
    m_framesStated = int(std::min<std::uint32_t>(frames, INT32_MAX));
    // The count is written at the end: 0 is of a recording that was broken off.
    const int counted = frames > 0 ? m_framesStated : INT32_MAX;
    h.frames = int(std::min<std::int64_t>({held, counted, kMostFrames}));
    return h.frames > 0 ? "" : "The clip has no frames";
}

bool SerFile::HasTimes() {
    return m_header.frames == m_framesStated && ::fseeko(m_file.get(), 0, SEEK_END) == 0 &&
           ::ftello(m_file.get()) - TimesPlace() >= m_header.frames * std::int64_t(kTimeBytes);
}

double SerFile::Length() {
    std::array<std::uint8_t, kTimeBytes> first{};
    std::array<std::uint8_t, kTimeBytes> last{};
    if (!HasTimes() || !ReadAt(TimesPlace(), first.data(), kTimeBytes) ||
        !ReadAt(TimesPlace() + (m_header.frames - 1) * std::int64_t(kTimeBytes), last.data(),
                kTimeBytes))
        return 0;
    const std::int64_t begin = Ticks(first.data());
    const std::int64_t end = Ticks(last.data());
    return begin >= 0 && end > begin ? double(end - begin) / kTicks : 0;
}

std::vector<std::int64_t> SerFile::Stamps() {
    if (!HasTimes()) return {};
    const auto count = std::size_t(m_header.frames);
    std::vector<std::uint8_t> bytes(count * kTimeBytes);
    if (!ReadAt(TimesPlace(), bytes.data(), bytes.size())) return {};
    std::vector<std::int64_t> stamps(count);
    for (std::size_t i = 0; i < count; ++i) stamps[i] = Ticks(&bytes[i * kTimeBytes]);
    return stamps;
}

std::vector<double> SerFile::Times() {
    const std::vector<std::int64_t> stamps = Stamps();
    if (stamps.empty() || stamps.front() < 0) return {};
    std::vector<double> times;
    times.reserve(stamps.size());
    std::int64_t before = stamps.front() - 1;
    for (const std::int64_t ticks : stamps) {
        if (ticks <= before) return {};
        times.push_back(double(ticks - stamps.front()) / kTicks);
        before = ticks;
    }
    return times;
}

// The header has a word for it that programs write either way round, so the pixels are asked.
void SerFile::FindByteOrder(const std::vector<std::uint8_t>& frame) {
    const int step = m_header.IsBayer() ? 2 : m_header.Samples();
    const std::uint64_t highFirst = Roughness(frame, 0, step);
    const std::uint64_t lowFirst = Roughness(frame, 1, step);
    m_highByteFirst = highFirst < lowFirst;
    m_orderKnown = highFirst != lowFirst; // an even frame says nothing
}

std::string SerFile::ReadStored(int frame, std::vector<std::uint8_t>& bytes) {
    if (frame < 0 || frame >= m_header.frames) return "There is no such frame";
    bytes.resize(std::size_t(m_header.FrameBytes()));
    if (!ReadAt(kSerHeaderBytes + m_header.FrameBytes() * frame, bytes.data(), bytes.size()))
        return "The frame cannot be read";
    if (m_header.SampleBytes() == 2 && !m_orderKnown) FindByteOrder(bytes);
    return {};
}

std::string SerFile::ReadFrame(int frame, std::vector<std::uint16_t>& samples) {
    std::vector<std::uint8_t>& bytes = m_frame;
    if (std::string error = ReadStored(frame, bytes); !error.empty()) return error;
    const bool wide = m_header.SampleBytes() == 2;
    const std::size_t high = m_highByteFirst ? 0 : 1;
    const std::uint32_t most = (1u << m_header.bits) - 1;
    samples.resize(bytes.size() / std::size_t(m_header.SampleBytes()));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::uint32_t value =
            wide ? std::uint32_t(bytes[2 * i + high] << 8 | bytes[2 * i + 1 - high]) : bytes[i];
        samples[i] = std::uint16_t(std::min(value, most) * UINT16_MAX / most);
    }
    return {};
}

std::vector<std::uint16_t> SerColors(const SerHeader& h,
                                     const std::vector<std::uint16_t>& samples) {
    const std::size_t pixels = std::size_t(h.width) * std::size_t(h.height);
    if (h.Samples() == 3) {
        std::vector<std::uint16_t> colors = samples;
        for (std::size_t i = 0; i < pixels && h.color == SerHeader::Bgr; ++i)
            std::swap(colors[3 * i], colors[3 * i + 2]);
        return colors;
    }
    std::vector<std::uint16_t> colors(3 * pixels);
    if (h.IsBayer())
        FillIn(BayerRows(h, samples), colors.data());
    else
        for (std::size_t i = 0; i < colors.size(); ++i) colors[i] = samples[i / 3];
    return colors;
}

} // namespace tarn
