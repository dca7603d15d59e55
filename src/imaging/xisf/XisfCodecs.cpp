// The libraries behind blocks: those that unpack and the one that makes checksums.
#include "imaging/xisf/XisfBlock.h"
#include "imaging/xisf/XisfLibraries.h"

#include <array>
#include <limits>

#include <lz4.h>
#include <nettle/sha1.h>
#include <nettle/sha2.h>
#include <nettle/sha3.h>
#include <nettle/version.h>
#include <zlib.h>
#include <zstd.h>

namespace tarn {

namespace {

const unsigned char* Bytes(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

template <std::size_t Size, typename State>
std::string Digest(std::string_view bytes, void (*init)(State*),
                   void (*update)(State*, std::size_t, const std::uint8_t*),
                   void (*digest)(State*, std::size_t, std::uint8_t*)) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    State state;
    init(&state);
    update(&state, bytes.size(), Bytes(bytes));
    std::array<std::uint8_t, Size> sum{};
    digest(&state, sum.size(), sum.data());
    std::string text;
    for (const std::uint8_t each : sum) {
        text += kDigits[each >> 4U];
        text += kDigits[each & 15U];
    }
    return text;
}

} // namespace

std::string XisfDigestOf(std::string_view bytes, const std::string& digest) {
    if (digest == "SHA-1")
        return Digest<SHA1_DIGEST_SIZE>(bytes, sha1_init, sha1_update, sha1_digest);
    if (digest == "SHA-256")
        return Digest<SHA256_DIGEST_SIZE>(bytes, sha256_init, sha256_update, sha256_digest);
    if (digest == "SHA-512")
        return Digest<SHA512_DIGEST_SIZE>(bytes, sha512_init, sha512_update, sha512_digest);
    if (digest == "SHA3-256")
        return Digest<SHA3_256_DIGEST_SIZE>(bytes, sha3_256_init, sha3_256_update, sha3_256_digest);
    if (digest == "SHA3-512")
        return Digest<SHA3_512_DIGEST_SIZE>(bytes, sha3_512_init, sha3_512_update, sha3_512_digest);
    return {};
}

bool XisfUnpack(std::string_view packed, XisfCodec codec, unsigned char* to, std::size_t count) {
    if (codec == XisfCodec::Zlib) {
        uLongf length = count;
        return ::uncompress(to, &length, Bytes(packed), packed.size()) == Z_OK && length == count;
    }
    if (codec == XisfCodec::Lz4) {
        constexpr std::size_t kMost = std::numeric_limits<int>::max();
        return packed.size() <= kMost && count <= kMost &&
               ::LZ4_decompress_safe(packed.data(), reinterpret_cast<char*>(to), int(packed.size()),
                                     int(count)) == int(count);
    }
    return ::ZSTD_decompress(to, count, packed.data(), packed.size()) == count;
}

XisfVersions XisfLibrariesRun() {
    return {"", ::zlibVersion(), ::LZ4_versionString(), ::ZSTD_versionString(),
            std::to_string(::nettle_version_major()) + "." +
                std::to_string(::nettle_version_minor())};
}

} // namespace tarn
