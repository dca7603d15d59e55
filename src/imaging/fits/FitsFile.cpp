#include "imaging/fits/FitsFile.h"

#include "imaging/fits/FitsHandle.h"
#include "imaging/fits/FitsWords.h"
#include "imaging/fits/PackedFits.h"
#include "imaging/fits/TwoThreads.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <limits>
#include <vector>

#include <fitsio.h>

namespace tarn {

namespace {

constexpr std::size_t kChunk = std::size_t(1) << 20; // samples a call
constexpr int kByteBits = 8;
constexpr int kWordBits = 16;
constexpr double kMostByte = 255;
constexpr double kMostWord = 65535;
constexpr int kSignBit = 0x8000;
constexpr const char* kCutShort = "The file ends too early";

// How the samples lie in the file, found once and used by both threads.
struct Reading {
    const std::string& path;
    FitsPlace place;
    bool blanks; // some values mean that there is none
    FitsSamples& to;

    int Read(FitsHandle& file, std::size_t first, std::size_t count) const;
    std::size_t ReadPart(std::size_t begin, std::size_t end, std::string& error) const;
};

int Reading::Read(FitsHandle& file, std::size_t first, std::size_t count) const {
    const auto at = static_cast<LONGLONG>(std::size_t(place.plane) * to.All() + first) + 1;
    const auto length = static_cast<LONGLONG>(count);
    int anyBlank = 0; // the library writes it without looking
    if (to.floats) {
        float none = std::numeric_limits<float>::quiet_NaN();
        const bool whole = to.header.bits > 0 && blanks;
        return fits_read_img(file, TFLOAT, at, length, whole ? &none : nullptr,
                             to.floats.get() + first, &anyBlank, &file.status);
    }
    std::uint16_t* words = to.words.get() + first;
    fits_set_bscale(file, 1, 0, &file.status); // as stored; the scale is applied by who looks
    if (to.header.bits == kByteBits) {
        std::vector<unsigned char> bytes(count);
        fits_read_img(file, TBYTE, at, length, nullptr, bytes.data(), &anyBlank, &file.status);
        std::copy(bytes.begin(), bytes.end(), words);
    } else {
        fits_read_img(file, TSHORT, at, length, nullptr, words, &anyBlank, &file.status);
        std::for_each(words, words + count, [](std::uint16_t& word) { word ^= kSignBit; });
    }
    return file.status;
}

// How many from `begin` on could be read.
std::size_t Reading::ReadPart(std::size_t begin, std::size_t end, std::string& error) const {
    FitsHandle file(path);
    if (file.status == 0) file.MoveTo(place.part);
    std::size_t at = begin;
    while (file.status == 0 && at < end) {
        const std::size_t count = std::min(kChunk, end - at);
        if (Read(file, at, count) == 0) at += count;
    }
    if (file.status != 0) error = FitsFaultText(file.status);
    return at - begin;
}

bool MakeRoom(FitsSamples& samples, bool blanks) {
    const bool words =
        !blanks && (samples.header.bits == kByteBits || samples.header.bits == kWordBits);
    if (words)
        samples.words = RoomFor<std::uint16_t>(samples.All());
    else
        samples.floats = RoomFor<float>(samples.All());
    return samples.words || samples.floats;
}

void TakeScale(FitsHandle& file, FitsSamples& samples) {
    const double zero = file.Number("BZERO", 0);
    samples.scale = file.Number("BSCALE", 1);
    const bool word = samples.header.bits == kWordBits;
    samples.zero = word ? zero - samples.scale * kSignBit : zero;
    // Where words count from 0, the largest is white.
    if (samples.scale == 1 && samples.zero == 0)
        samples.range = ValueRange{0, word ? kMostWord : kMostByte};
}

FitsHeader HeaderOf(FitsHandle& file, const FitsPlace& place) {
    FitsHeader header = place.header;
    TakeWords(header, [&](std::initializer_list<const char*> names) { return file.Word(names); });
    return header;
}

// From the colours of each pixel to plane after plane.
template <typename Sample> bool PartColours(SamplesOf<Sample>& samples, std::size_t pixels) {
    constexpr std::size_t kColours = 3;
    auto planes = RoomFor<Sample>(kColours * pixels);
    if (!planes) return false;
    for (std::size_t i = 0; i < pixels; ++i)
        for (std::size_t colour = 0; colour < kColours; ++colour)
            planes[colour * pixels + i] = samples[kColours * i + colour];
    samples = std::move(planes);
    return true;
}

bool PartColours(FitsSamples& samples) {
    if (samples.count < samples.All()) samples.count = 0; // a part of each would be of no use
    if (samples.count == 0) return true;
    return samples.words ? PartColours(samples.words, samples.PerPlane())
                         : PartColours(samples.floats, samples.PerPlane());
}

// What is to be read, and how many of its samples are there.
std::size_t Prepare(Reading& reading, int image, std::string& error) {
    FitsHandle file(reading.path);
    const auto place = file.FindPicture(image, error);
    if (!place) return 0;
    FitsSamples& samples = reading.to;
    samples.header = HeaderOf(file, *place);
    reading.place = *place;
    reading.blanks = file.Has("BLANK") || file.Has("ZBLANK");
    const std::size_t before = std::size_t(place->plane) * samples.All();
    const std::size_t there = file.SamplesInFile(before + samples.All(), samples.header.bits);
    if (there <= before)
        error = kCutShort;
    else if (!MakeRoom(samples, reading.blanks))
        error = "Not enough memory";
    if (!error.empty()) return 0;
    if (samples.words) TakeScale(file, samples);
    return there - before;
}

} // namespace

std::optional<FitsHeader> ReadFitsHeader(const std::string& path, int image, std::string& error) {
    const PlainFits plain(path, error);
    if (!error.empty()) return std::nullopt;
    FitsHandle file(plain.Path());
    const auto place = file.FindPicture(image, error);
    if (!place) return std::nullopt;
    return HeaderOf(file, *place);
}

std::optional<FitsSamples> ReadFitsSamples(const std::string& path, int image, std::string& error) {
    const PlainFits plain(path, error);
    if (!error.empty()) return std::nullopt;
    FitsSamples samples;
    Reading reading{plain.Path(), {}, false, samples};
    const std::size_t there = Prepare(reading, image, error);
    if (there == 0) return std::nullopt;
    std::array<std::size_t, 2> read{};
    std::array<std::string, 2> errors;
    const std::size_t middle = there / 2;
    InTwoThreads(there, [&](std::size_t begin, std::size_t end) {
        const std::size_t half = begin == 0 ? 0 : 1;
        read[half] = reading.ReadPart(begin, end, errors[half]);
    });
    samples.count = read[0] == middle || read[1] == 0 ? read[0] + read[1] : read[0];
    error = errors[0].empty() ? errors[1] : errors[0];
    if (error.empty() && there < samples.All()) error = kCutShort;
    if (reading.place.interleaved && !PartColours(samples)) error = "Not enough memory";
    if (samples.count == 0) return std::nullopt;
    return samples;
}

} // namespace tarn
