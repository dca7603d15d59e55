#include "FitsFiles.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>

#include <zlib.h>

namespace tarn::testing {

namespace {

constexpr std::size_t kBlock = 2880;
constexpr std::size_t kCard = 80;

void AddCard(std::string& header, std::string card) {
    card.resize(kCard, ' ');
    header += card;
}

void AddWord(std::string& header, std::string name, const std::string& value) {
    name.resize(8, ' ');
    AddCard(header, name + "= " +
                        (value.starts_with("'")
                             ? ""
                             : std::string(20 - std::min<std::size_t>(20, value.size()), ' ')) +
                        value);
}

void Fill(std::string& part, char with) {
    part.resize((part.size() + kBlock - 1) / kBlock * kBlock, with);
}

template <typename Number> void AddNumber(std::string& data, Number number) {
    for (int shift = int(sizeof number) * 8 - 8; shift >= 0; shift -= 8)
        data += char(static_cast<std::uint64_t>(number) >> shift & 0xFF);
}

void AddSample(std::string& data, int bits, double value) {
    if (bits == 8) AddNumber(data, std::uint8_t(value));
    if (bits == 16) AddNumber(data, std::uint16_t(std::int16_t(value)));
    if (bits == 32) AddNumber(data, std::uint32_t(std::int32_t(value)));
    if (bits == 64) AddNumber(data, std::uint64_t(std::int64_t(value)));
    if (bits == -32) AddNumber(data, std::bit_cast<std::uint32_t>(float(value)));
    if (bits == -64) AddNumber(data, std::bit_cast<std::uint64_t>(value));
}

std::string Part(std::string header, int bits, const std::vector<int>& axes,
                 const std::function<double(std::size_t)>& sample,
                 const std::vector<FitsWord>& words, bool extension) {
    AddWord(header, "BITPIX", std::to_string(bits));
    AddWord(header, "NAXIS", std::to_string(axes.size()));
    std::size_t count = axes.empty() ? 0 : 1;
    for (std::size_t i = 0; i < axes.size(); ++i) {
        AddWord(header, "NAXIS" + std::to_string(i + 1), std::to_string(axes[i]));
        count *= std::size_t(axes[i]);
    }
    if (extension) {
        AddWord(header, "PCOUNT", "0");
        AddWord(header, "GCOUNT", "1");
    }
    for (const FitsWord& word : words) AddWord(header, word.name, word.value);
    AddCard(header, "END");
    Fill(header, ' ');
    std::string data;
    if (sample)
        for (std::size_t i = 0; i < count; ++i) AddSample(data, bits, sample(i));
    Fill(data, '\0');
    return header + data;
}

} // namespace

std::string FitsBytes(int bits, const std::vector<int>& axes,
                      const std::function<double(std::size_t)>& sample,
                      const std::vector<FitsWord>& words) {
    std::string header;
    AddWord(header, "SIMPLE", "T");
    return Part(header, bits, axes, sample, words, false);
}

std::string FitsExtension(int bits, const std::vector<int>& axes,
                          const std::function<double(std::size_t)>& sample,
                          const std::vector<FitsWord>& words) {
    std::string header;
    AddWord(header, "XTENSION", "'IMAGE   '");
    return Part(header, bits, axes, sample, words, true);
}

std::string Gzipped(const std::string& bytes) {
    constexpr int kAsGzip = 16 + MAX_WBITS;
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, kAsGzip, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY);
    std::string from = bytes;
    std::string packed(deflateBound(&stream, bytes.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(from.data());
    stream.avail_in = uInt(from.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = uInt(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string NightSky(int width, int height, const std::vector<FitsWord>& words) {
    constexpr double kZero = 32768;
    std::minstd_rand random(1);
    std::normal_distribution<double> noise(1000, 20);
    std::vector<FitsWord> all{{"BZERO", "32768"}, {"BSCALE", "1"}};
    all.insert(all.end(), words.begin(), words.end());
    const auto sample = [&](std::size_t i) {
        const int x = int(i % std::size_t(width));
        const int fromTop = height - 1 - int(i / std::size_t(width));
        const bool star = std::abs(x - width / 4) < 2 && std::abs(fromTop - height / 4) < 2;
        return (star ? 60000 : std::round(noise(random))) - kZero;
    };
    return FitsBytes(16, {width, height}, sample, all);
}

} // namespace tarn::testing
