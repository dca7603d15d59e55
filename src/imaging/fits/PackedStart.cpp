#include "imaging/fits/FitsHeader.h"
#include "imaging/fits/PackedFits.h"

#include <array>

#include <zlib.h>

namespace tarn {

bool IsPackedFits(std::string_view start) {
    constexpr std::string_view kGzip = "\x1F\x8B";
    constexpr int kOnlyGzip = 16; // added to the window's size
    if (!start.starts_with(kGzip)) return false;
    std::string packed(start.substr(0, kPackedStart));
    std::array<char, kFitsStart.size()> text{};
    z_stream stream{};
    if (::inflateInit2(&stream, kOnlyGzip + MAX_WBITS) != Z_OK) return false;
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(text.data());
    stream.avail_out = static_cast<uInt>(text.size());
    ::inflate(&stream, Z_SYNC_FLUSH);
    ::inflateEnd(&stream);
    return std::string_view(text.data(), text.size()) == kFitsStart;
}

} // namespace tarn
