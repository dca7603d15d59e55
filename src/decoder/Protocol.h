// What the program and its decoder process say to each other. Both are of one build; a packet is a
// head as it lies in memory, and texts behind it. The program takes nothing in an answer for
// granted.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace tarn {

enum class DecoderVerb : std::uint32_t {
    Size,       // numbers: width, height
    Decode,     // numbers: width, height, PixelKind; memory: rows of 32 bits, bytes: colour profile
    Profile,    // bytes: the file's colour profile
    SkyHeader,  // bytes: the header (DecoderWords)
    SkySamples, // the same; memory: the samples, as SkyPlane.h says
    FirstFrame, // as Decode; the width is that of a square in which it fits
};

enum class DecoderFormat : std::uint32_t { Raw, Heif, Jxl, Tiff, Toolkit, Fits, Xisf, Clip };

// Kinds of pixels in memory, each of 32 bits as the toolkit has them.
enum class PixelKind : std::uint32_t { Opaque, ShinesThrough };

// What a process is for. Each loads what that takes before it gives up its rights.
enum class DecoderKind : std::uint32_t { Pictures, Clips };

constexpr DecoderKind KindFor(DecoderFormat format) {
    return format == DecoderFormat::Clip ? DecoderKind::Clips : DecoderKind::Pictures;
}

// Rights that a process has given up, as bits.
inline constexpr std::uint32_t kCallsFiltered = 1; // system calls beyond its list are refused
inline constexpr std::uint32_t kFilesRefused = 2;  // by the kernel's rules for files and network
inline constexpr std::uint32_t kMemoryLimited = 4;

inline constexpr std::uint32_t kProtocol = 0x54444331; // changes with what follows
inline constexpr int kDecoderSocket = 3;               // its number in the process
inline constexpr std::size_t kMostText = 1000;         // bytes of an error
inline constexpr std::size_t kMostBytes = 4U << 20U;   // of a profile and the like
inline constexpr std::size_t kMostInline = 32U << 10U; // of these in the packet itself
inline constexpr std::size_t kMostPayload = 1024;      // behind a request

// Seconds that one answer may take before the process is ended.
constexpr int SecondsFor(DecoderFormat format) {
    constexpr int kMost = 30;
    constexpr int kMostOfRaw = 90; // developing them is slow
    return format == DecoderFormat::Raw ? kMostOfRaw : kMost;
}

// The first packet of a process, once it has given up its rights.
struct DecoderHello {
    std::uint32_t protocol = kProtocol;
    std::uint32_t rights = 0;
};

// With the file's descriptor; the payload follows.
struct RequestHead {
    std::uint32_t protocol = kProtocol;
    DecoderVerb verb = DecoderVerb::Size;
    DecoderFormat format = DecoderFormat::Raw;
    std::int32_t width = 0; // wished; not above 0: all
    std::int32_t height = 0;
    std::int32_t image = 0; // which of the file's pictures
    std::uint32_t payload = 0;
};

struct DecoderRequest {
    RequestHead head;
    std::string payload; // of FITS and XISF files the user's choice of a stretch
};

// With the memory's descriptor, if there is any. Behind it the error and the bytes, which stand at
// the end of the memory where they are too many for a packet.
struct AnswerHead {
    std::uint32_t protocol = kProtocol;
    std::uint32_t error = 0; // bytes
    std::uint32_t bytes = 0;
    std::uint32_t bytesInMemory = 0;
    std::uint64_t memory = 0; // bytes without those
    std::array<std::int64_t, 4> numbers{};
};

inline constexpr std::size_t kMostPacket = sizeof(AnswerHead) + kMostText + kMostInline;

static_assert(std::is_trivially_copyable_v<RequestHead>);
static_assert(std::is_trivially_copyable_v<AnswerHead>);

// A head as bytes, and back.
template <typename Head> std::string_view BytesOf(const Head& head) {
    return {reinterpret_cast<const char*>(&head), sizeof head};
}

} // namespace tarn
