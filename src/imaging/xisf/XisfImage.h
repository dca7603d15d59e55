// What the header of an XISF file says of one of its pictures, and where the samples are.
#pragma once

#include "imaging/fits/FitsSamples.h"
#include "imaging/xisf/XisfTurn.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

enum class XisfCodec { None, Zlib, Lz4, Zstd };

// A run of bytes somewhere in the file, as it is packed there.
struct XisfBlock {
    std::string name; // in messages: "block of image 1"

    std::uint64_t offset = 0; // in the file
    std::uint64_t size = 0;   // bytes
    std::string encoding;     // "base64" or "hex" where the bytes stand in the header, as `text`
    std::string text;

    XisfCodec codec = XisfCodec::None;
    std::uint64_t unpacked = 0; // bytes
    std::size_t shuffled =
        0; // bytes of the items whose bytes were sorted by place; 0: they were not
    struct Piece {
        std::uint64_t packed = 0;
        std::uint64_t unpacked = 0;
    };
    std::vector<Piece> pieces; // packed one by one; empty: it is one

    std::string digest;   // "SHA3-256"; empty for none
    std::string expected; // as hexadecimal digits, in capitals
};

struct XisfImage {
    FitsHeader header;        // upright, as all that is made of it
    XisfTurn turn;            // of the samples, which are not yet
    int channels = 1;         // in the file; those behind the colours are not shown
    bool interleaved = false; // the channels of a pixel lie together
    bool highFirst = false;   // of the bytes of a number
    std::optional<ValueRange> range;
    XisfBlock block;

    std::uint64_t Bytes() const; // of all samples
};

// Of the header's text, which is taken apart in place; the first stands for one that is not there.
// None and an error when there is no picture, or it is of a kind that is not read. `fileBytes`:
// what is larger than a file of this size can hold is refused.
std::optional<XisfImage> ParseXisfImage(std::string& header, int image, std::uint64_t fileBytes,
                                        std::string& error);

} // namespace tarn
