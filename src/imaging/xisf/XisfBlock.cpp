#include "imaging/xisf/XisfBlock.h"

#include "imaging/fits/TwoThreads.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr const char* kNoMemory = "Not enough memory";

std::string FaultOf(const XisfBlock& block, const std::string& fault) {
    return "The XISF file cannot be read: " + block.name + ": " + fault;
}

bool Reserve(XisfBytes& bytes, std::uint64_t count) {
    bytes.bytes = RoomFor<unsigned char>(count);
    bytes.count = bytes.bytes ? count : 0;
    return bytes.bytes != nullptr;
}

// As many as there are.
std::size_t ReadAt(int file, std::uint64_t offset, unsigned char* to, std::size_t count) {
    std::size_t filled = 0;
    while (filled < count) {
        const ssize_t got = ::pread(file, to + filled, count - filled, off_t(offset + filled));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        filled += std::size_t(got);
    }
    return filled;
}

bool Fetch(int file, const XisfBlock& block, XisfBytes& stored, std::string& error) {
    struct stat facts {};
    const bool known = ::fstat(file, &facts) == 0 && facts.st_size > 0;
    const std::uint64_t end = known ? std::uint64_t(facts.st_size) : 0;
    const std::uint64_t there = block.offset < end ? std::min(block.size, end - block.offset) : 0;
    if (!Reserve(stored, there)) {
        error = kNoMemory;
        return false;
    }
    stored.count = ReadAt(file, block.offset, stored.bytes.get(), there);
    if (stored.count < block.size || stored.count == 0)
        error = FaultOf(block, "the file ends too early");
    return stored.count > 0;
}

int DigitOf(char c, std::string_view digits) {
    const auto place = digits.find(c);
    return place == std::string_view::npos ? -1 : int(place);
}

// Text of `bits` bits a character, blanks between them allowed; padding ends it.
bool Decode(std::string_view text, std::string_view digits, unsigned bits, XisfBytes& to) {
    unsigned value = 0;
    unsigned held = 0;
    std::size_t count = 0;
    for (char c : text) {
        if (c == ' ' || c == '\n' || c == '\r' || c == '\t') continue;
        if (c == '=') break;
        if (bits == 4 && c >= 'A' && c <= 'F') c = char(c - 'A' + 'a');
        const int digit = DigitOf(c, digits);
        if (digit < 0) return false;
        value = value << bits | unsigned(digit);
        held += bits;
        if (held < 8) continue;
        held -= 8;
        to.bytes[count++] = static_cast<unsigned char>(value >> held & 0xFFU);
    }
    to.count = count;
    return true;
}

bool TakeText(const XisfBlock& block, XisfBytes& stored, std::string& error) {
    if (!Reserve(stored, block.text.size())) {
        error = kNoMemory;
        return false;
    }
    const bool hex = block.encoding == "hex";
    const bool decoded =
        hex ? Decode(block.text, "0123456789abcdef", 4, stored)
            : Decode(block.text, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/",
                     6, stored);
    if (!decoded) error = FaultOf(block, "a sign in it is no " + block.encoding);
    return decoded;
}

// Bytes of one place in each item had been laid together, all first ones in front.
void Unshuffle(const unsigned char* from, unsigned char* to, std::size_t size, std::size_t item) {
    const std::size_t items = size / item;
    InTwoThreads(items, [&](std::size_t begin, std::size_t end) {
        for (std::size_t place = 0; place < item; ++place) {
            const unsigned char* source = from + place * items;
            for (std::size_t i = begin; i < end; ++i) to[i * item + place] = source[i];
        }
    });
    std::copy(from + items * item, from + size, to + items * item);
}

bool UnpackPieces(const XisfBlock& block, std::string_view packed, unsigned char* to) {
    std::vector<XisfBlock::Piece> pieces = block.pieces;
    if (pieces.empty()) pieces.push_back({packed.size(), block.unpacked});
    std::uint64_t left = block.unpacked;
    for (const XisfBlock::Piece& piece : pieces) {
        if (piece.packed > packed.size() || piece.unpacked > left) return false;
        if (!XisfUnpack(packed.substr(0, piece.packed), block.codec, to, piece.unpacked))
            return false;
        packed.remove_prefix(piece.packed);
        to += piece.unpacked;
        left -= piece.unpacked;
    }
    return left == 0;
}

std::optional<XisfBytes> Unpack(const XisfBlock& block, const XisfBytes& stored,
                                std::string& error) {
    XisfBytes unpacked;
    if (!Reserve(unpacked, block.unpacked)) {
        error = kNoMemory;
        return std::nullopt;
    }
    if (!UnpackPieces(block, stored.View(), unpacked.bytes.get())) {
        if (error.empty()) error = FaultOf(block, "it cannot be unpacked");
        return std::nullopt;
    }
    if (block.shuffled < 2) return unpacked;
    XisfBytes sorted;
    if (!Reserve(sorted, block.unpacked)) {
        error = kNoMemory;
        return std::nullopt;
    }
    Unshuffle(unpacked.bytes.get(), sorted.bytes.get(), sorted.count, block.shuffled);
    return sorted;
}

} // namespace

std::optional<XisfBytes> ReadXisfBlock(int file, const XisfBlock& block, std::string& error) {
    XisfBytes stored;
    const bool got =
        block.encoding.empty() ? Fetch(file, block, stored, error) : TakeText(block, stored, error);
    if (!got) return std::nullopt;
    // Of a part the sum is another one anyhow.
    if (error.empty() && !block.digest.empty() &&
        XisfDigestOf(stored.View(), block.digest) != block.expected)
        error = FaultOf(block, "checksum " + block.digest + " differs");
    if (block.codec == XisfCodec::None) return stored;
    return Unpack(block, stored, error);
}

} // namespace tarn
