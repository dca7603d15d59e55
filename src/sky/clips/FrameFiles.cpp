#include "sky/clips/FrameFiles.h"

#include "common/paths.h"
#include "imaging/fits/FitsWriter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tarn {

namespace {

constexpr std::size_t kBlock = 2880;

// Two bytes a sample, the high one first, 32768 less.
void AppendPlane(const ClipImage& image, const std::vector<std::uint8_t>& samples, int plane,
                 std::string& bytes) {
    const auto step = std::size_t(image.samples);
    const std::size_t pixels = std::size_t(image.width) * std::size_t(image.height);
    const bool wide = image.bits > 8;
    const std::size_t high = image.highByteFirst ? 0 : 1;
    for (std::size_t at = std::size_t(plane); at < pixels * step; at += step) {
        const unsigned value =
            (wide ? unsigned(samples[2 * at + high]) << 8U | samples[2 * at + 1 - high]
                  : samples[at]) ^
            0x8000U;
        bytes.push_back(char(value >> 8U));
        bytes.push_back(char(value & 0xffU));
    }
}

void Pad(std::string& bytes, char with) {
    bytes.resize((bytes.size() + kBlock - 1) / kBlock * kBlock, with);
}

void AddWord(FitsCards& cards, const char* word, const std::string& text) {
    if (!text.empty()) cards.Add(word, std::string_view(text));
}

FitsCards CardsOf(const ClipImage& image, const RatedClip& rated, const std::string& clip,
                  const FrameWords& words) {
    FitsCards cards;
    cards.AddWhole("SIMPLE  =                    T");
    cards.Add("BITPIX", 16LL);
    cards.Add("NAXIS", image.samples == 3 ? 3LL : 2LL);
    cards.Add("NAXIS1", static_cast<long long>(image.width));
    cards.Add("NAXIS2", static_cast<long long>(image.height));
    if (image.samples == 3) cards.Add("NAXIS3", 3LL, "red, green, blue");
    cards.Add("BSCALE", 1LL);
    cards.Add("BZERO", 32768LL);
    cards.Add("DATAMAX", static_cast<long long>((1U << unsigned(image.bits)) - 1U),
              "what a sample can hold");
    // Without "Z": dates of such files are UTC.
    AddWord(cards, "DATE-OBS", words.utc.substr(0, words.utc.find('Z')));
    AddWord(cards, "BAYERPAT", image.pattern);
    AddWord(cards, "OBSERVER", rated.observer);
    AddWord(cards, "TELESCOP", rated.telescope);
    AddWord(cards, "INSTRUME", rated.instrument);
    AddWord(cards, "ROWORDER", "TOP-DOWN");
    cards.Add("FRAMENUM", static_cast<long long>(words.number), "in the clip, from 0");
    cards.Add("SHARPNES", rated.frames[words.number].sharpness, "beside frames of this clip");
    cards.AddHistory("Frame " + std::to_string(words.number) + " of " + LastPart(clip) +
                     ", number " + std::to_string(words.rank + 1) + " by sharpness");
    if (words.isAligned)
        cards.AddHistory("Shifted by " + std::to_string(words.shift.x) + ", " +
                         std::to_string(words.shift.y) + " pixels");
    return cards;
}

} // namespace

FrameShift ShiftOnto(const RatedFrame& frame, const RatedFrame& other, bool isBayer) {
    const double step = isBayer ? 2 : 1;
    const auto whole = [step](double by) {
        return std::isfinite(by) ? int(step * double(std::lround(by / step))) : 0;
    };
    return {whole(other.x - frame.x), whole(other.y - frame.y)};
}

std::vector<std::uint8_t> ShiftedBytes(const ClipImage& image, FrameShift shift) {
    if (shift.x == 0 && shift.y == 0) return *image.bytes;
    const std::ptrdiff_t pixel = std::ptrdiff_t(image.samples) * (image.bits > 8 ? 2 : 1);
    const std::ptrdiff_t row = pixel * image.width;
    const std::ptrdiff_t kept = std::max(0, image.width - std::abs(shift.x));
    std::vector<std::uint8_t> shifted(image.bytes->size(), 0);
    for (int y = std::max(0, shift.y); y < std::min(image.height, image.height + shift.y); ++y) {
        const auto from = image.bytes->begin() + row * (y - shift.y) +
                          pixel * std::min(image.width, std::max(0, -shift.x));
        std::copy(from, from + pixel * kept,
                  shifted.begin() + row * y + pixel * std::min(image.width, std::max(0, shift.x)));
    }
    return shifted;
}

std::string FitsOfFrame(const ClipImage& image, const RatedClip& rated, const std::string& clip,
                        const FrameWords& words) {
    std::string bytes;
    const FitsCards cards = CardsOf(image, rated, clip, words);
    for (const std::string& card : cards.All()) bytes += card;
    bytes += "END";
    Pad(bytes, ' ');
    const std::vector<std::uint8_t> samples = ShiftedBytes(image, words.shift);
    for (int plane = 0; plane < image.samples; ++plane)
        AppendPlane(image, samples, image.blueFirst ? 2 - plane : plane, bytes);
    Pad(bytes, '\0');
    return bytes;
}

} // namespace tarn
