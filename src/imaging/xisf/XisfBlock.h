// The bytes of a block of an XISF file: fetched, compared with their checksum and unpacked.
#pragma once

#include "imaging/xisf/XisfImage.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarn {

struct XisfBytes {
    std::unique_ptr<unsigned char[]> bytes;
    std::size_t count = 0;

    std::string_view View() const { return {reinterpret_cast<const char*>(bytes.get()), count}; }
};

// From the file that is open under this number. Bytes and an error both when the file ends too
// early, or the checksum differs; the error names the block.
std::optional<XisfBytes> ReadXisfBlock(int file, const XisfBlock& block, std::string& error);

// As hexadecimal digits, in capitals; the digest is one of those that XisfBlock names.
std::string XisfDigestOf(std::string_view bytes, const std::string& digest);

// All of `to` out of `packed`; false when that is not what comes out.
bool XisfUnpack(std::string_view packed, XisfCodec codec, unsigned char* to, std::size_t count);

} // namespace tarn
