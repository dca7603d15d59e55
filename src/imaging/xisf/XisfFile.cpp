#include "imaging/xisf/XisfFile.h"

#include "imaging/fits/TwoThreads.h"
#include "imaging/xisf/XisfBlock.h"
#include "imaging/xisf/XisfImage.h"
#include "platform/OpenRegular.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <sys/stat.h>

namespace tarn {

namespace {

constexpr std::uint64_t kStart = 16; // bytes in front of the header
constexpr std::uint64_t kMostHeader = 64U << 20U;
constexpr int kByteBits = 8;
constexpr int kWordBits = 16;

std::uint64_t BytesOf(std::FILE* file) {
    struct stat facts {};
    return ::fstat(::fileno(file), &facts) == 0 ? std::uint64_t(std::max<off_t>(0, facts.st_size))
                                                : 0;
}

// Behind the mark stands the header's length, the low byte first.
std::string HeaderOf(std::FILE* file, std::string& error) {
    std::array<unsigned char, kStart> start{};
    std::string header;
    if (std::fread(start.data(), 1, start.size(), file) == start.size()) {
        std::uint64_t length = 0;
        for (std::size_t i = 0; i < 4; ++i)
            length |= std::uint64_t(start[kXisfStart.size() + i]) << 8 * i;
        if (length > kMostHeader) {
            error = "its header is too large";
            return {};
        }
        header.resize(std::min(length, BytesOf(file) - kStart));
        if (std::fread(header.data(), 1, header.size(), file) == length && length > 0)
            return header;
    }
    error = "the file ends within its header";
    return {};
}

std::optional<XisfImage> ImageOf(std::FILE* file, int image, std::string& error) {
    std::string fault;
    std::string header = HeaderOf(file, fault);
    auto found = fault.empty() ? ParseXisfImage(header, image, BytesOf(file), fault) : std::nullopt;
    if (!found) error = "The XISF file cannot be read: " + fault;
    return found;
}

template <typename Number, bool Swapped> Number NumberAt(const unsigned char* bytes) {
    Number number;
    if constexpr (Swapped) {
        std::array<unsigned char, sizeof number> turned{};
        std::reverse_copy(bytes, bytes + sizeof number, turned.begin());
        std::memcpy(&number, turned.data(), sizeof number);
    } else {
        std::memcpy(&number, bytes, sizeof number);
    }
    return number;
}

// From bytes in the order of the file to samples plane after plane.
template <typename Number, bool Swapped, typename Sample>
void Convert(const XisfImage& image, const XisfBytes& from, Sample* to) {
    const std::size_t perPlane = std::size_t(image.header.width) * std::size_t(image.header.height);
    const std::size_t there = from.count / sizeof(Number);
    const std::size_t channels = image.interleaved ? std::size_t(image.channels) : 1;
    for (std::size_t plane = 0; plane < std::size_t(image.header.planes); ++plane) {
        const std::size_t first = image.interleaved ? plane : plane * perPlane;
        const std::size_t left = there > first ? (there - first + channels - 1) / channels : 0;
        const unsigned char* source = from.bytes.get() + std::min(first, there) * sizeof(Number);
        Sample* target = to + plane * perPlane;
        InTwoThreads(std::min(left, perPlane), [&](std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i)
                target[i] =
                    Sample(NumberAt<Number, Swapped>(source + i * channels * sizeof(Number)));
        });
    }
}

template <typename Number, typename Sample>
void Convert(const XisfImage& image, const XisfBytes& from, Sample* to) {
    if (image.highFirst == (std::endian::native == std::endian::big))
        Convert<Number, false>(image, from, to);
    else
        Convert<Number, true>(image, from, to);
}

void TakeFloats(const XisfImage& image, const XisfBytes& from, float* to) {
    switch (image.header.bits) {
    case 8:
        return Convert<std::uint8_t>(image, from, to);
    case 16:
        return Convert<std::uint16_t>(image, from, to);
    case 32:
        return Convert<std::uint32_t>(image, from, to);
    case 64:
        return Convert<std::uint64_t>(image, from, to);
    case -32:
        return Convert<float>(image, from, to);
    default:
        return Convert<double>(image, from, to);
    }
}

// Of a file that is cut short only what lies in front of the cut counts.
std::size_t CountOf(const XisfImage& image, const XisfBytes& from, std::size_t all) {
    const std::size_t there = from.count / std::size_t(std::abs(image.header.bits) / kByteBits);
    if (!image.interleaved) return std::min(there, all);
    const std::size_t pixels = there / std::size_t(image.channels);
    return pixels >= all / std::size_t(image.header.planes) ? all
           : image.header.planes == 1                       ? pixels
                                                            : 0;
}

bool TakeSamples(const XisfImage& image, const XisfBytes& from, FitsSamples& to) {
    if (image.header.bits == kByteBits || image.header.bits == kWordBits) {
        to.words = RoomFor<std::uint16_t>(to.All());
        if (to.words && image.header.bits == kByteBits)
            Convert<std::uint8_t>(image, from, to.words.get());
        else if (to.words)
            Convert<std::uint16_t>(image, from, to.words.get());
        return to.words != nullptr;
    }
    to.floats = RoomFor<float>(to.All());
    if (to.floats) TakeFloats(image, from, to.floats.get());
    return to.floats != nullptr;
}

FileHandle Open(const std::string& path, std::string& error) {
    std::string why;
    FileHandle file = OpenRegular(path, why);
    if (!file) error = "The XISF file cannot be read: " + why;
    return file;
}

} // namespace

std::optional<FitsHeader> ReadXisfHeader(const std::string& path, int image, std::string& error) {
    const FileHandle file = Open(path, error);
    if (!file) return std::nullopt;
    auto found = ImageOf(file.get(), image, error);
    if (!found) return std::nullopt;
    return std::move(found->header);
}

std::optional<FitsSamples> ReadXisfSamples(const std::string& path, int image, std::string& error) {
    const FileHandle file = Open(path, error);
    if (!file) return std::nullopt;
    const auto found = ImageOf(file.get(), image, error);
    if (!found) return std::nullopt;
    const auto bytes = ReadXisfBlock(::fileno(file.get()), found->block, error);
    if (!bytes) return std::nullopt;
    if (bytes->count < found->Bytes() && error.empty())
        error =
            "The XISF file cannot be read: " + found->block.name + " is smaller than its picture";
    FitsSamples samples;
    samples.header = found->header;
    samples.range = found->range;
    samples.count = CountOf(*found, *bytes, samples.All());
    if (samples.count == 0) return std::nullopt;
    if (TakeSamples(*found, *bytes, samples) && TurnSamples(samples, found->turn)) return samples;
    error = "Not enough memory";
    return std::nullopt;
}

} // namespace tarn
