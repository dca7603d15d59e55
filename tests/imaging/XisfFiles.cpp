#include "XisfFiles.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include <lz4.h>
#include <lz4hc.h>
#include <zlib.h>
#include <zstd.h>

namespace tarn::testing {

namespace {

constexpr std::size_t kStart = 4096; // of the first block, or the next multiple

std::size_t BytesOf(const std::string& format) {
    return format.ends_with("8") ? 1 : format.ends_with("16") ? 2 : format.ends_with("32") ? 4 : 8;
}

void AddSample(std::string& data, const XisfPicture& of, double value) {
    const std::size_t size = BytesOf(of.format);
    std::uint64_t bits = std::uint64_t(value);
    if (of.format == "Float32") bits = std::bit_cast<std::uint32_t>(float(value));
    if (of.format == "Float64") bits = std::bit_cast<std::uint64_t>(value);
    for (std::size_t i = 0; i < size; ++i)
        data += char(bits >> 8 * (of.highFirst ? size - 1 - i : i) & 0xFF);
}

std::string Samples(const XisfPicture& of) {
    std::string data;
    const auto perPlane = std::size_t(of.width) * std::size_t(of.height);
    const auto channels = std::size_t(of.channels);
    for (std::size_t i = 0; i < perPlane * channels; ++i)
        AddSample(data, of, of.sample(of.interleaved ? i % channels * perPlane + i / channels : i));
    return data;
}

std::string Shuffled(const std::string& data, std::size_t item) {
    std::string sorted;
    for (std::size_t place = 0; place < item; ++place)
        for (std::size_t i = place; i < data.size(); i += item) sorted += data[i];
    return sorted;
}

std::string Packed(const std::string& data, const std::string& codec) {
    std::string packed(2 * data.size() + 1000, '\0');
    const int size = int(data.size());
    const int room = int(packed.size());
    std::size_t length = 0;
    if (codec == "zlib") {
        uLongf filled = packed.size();
        compress(reinterpret_cast<Bytef*>(packed.data()), &filled,
                 reinterpret_cast<const Bytef*>(data.data()), data.size());
        length = filled;
    }
    if (codec == "lz4")
        length = std::size_t(LZ4_compress_default(data.data(), packed.data(), size, room));
    if (codec == "lz4hc")
        length = std::size_t(LZ4_compress_HC(data.data(), packed.data(), size, room, 9));
    if (codec == "zstd")
        length = ZSTD_compress(packed.data(), packed.size(), data.data(), data.size(), 3);
    packed.resize(length);
    return packed;
}

std::string Hex(const std::string& bytes) {
    std::string text;
    for (const unsigned char byte : bytes)
        for (const int shift : {4, 0}) text += "0123456789ABCDEF"[byte >> shift & 15];
    return text;
}

std::string Base64(const std::string& bytes) {
    constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t bits = 0;
        for (std::size_t j = i; j < i + 3; ++j)
            bits = bits << 8 | (j < bytes.size() ? std::uint8_t(bytes[j]) : 0);
        for (std::size_t j = 0; j < 4; ++j)
            text += i + j <= bytes.size() ? kLetters[bits >> (18 - 6 * j) & 63] : '=';
        if (i % 57 == 0) text += "\n  ";
    }
    return text;
}

struct Block {
    std::string bytes;
    std::string attributes; // how it is packed
};

Block BlockOf(const XisfPicture& of) {
    std::string data = Samples(of);
    if (of.codec.empty()) return {data, {}};
    Block block;
    block.attributes = " compression=\"" + of.codec + (of.shuffled ? "+sh" : "") + ":" +
                       std::to_string(data.size()) +
                       (of.shuffled ? ":" + std::to_string(BytesOf(of.format)) : "") + "\"";
    if (of.shuffled) data = Shuffled(data, BytesOf(of.format));
    const std::size_t each = (data.size() + std::size_t(of.pieces) - 1) / std::size_t(of.pieces);
    std::string pieces;
    for (std::size_t at = 0; at < data.size(); at += each) {
        const std::string part = data.substr(at, each);
        const std::string packed = Packed(part, of.codec);
        pieces += (pieces.empty() ? "" : ":") + std::to_string(packed.size()) + "," +
                  std::to_string(part.size());
        block.bytes += packed;
    }
    if (of.pieces > 1) block.attributes += " subblocks=\"" + pieces + "\"";
    return block;
}

std::string Element(const XisfPicture& of, const Block& block, std::size_t offset) {
    const bool embedded = of.place == "embedded";
    std::string text =
        "<Image geometry=\"" + std::to_string(of.width) + ":" + std::to_string(of.height) + ":" +
        std::to_string(of.channels) + "\" sampleFormat=\"" + of.format + "\" colorSpace=\"" +
        (of.colour ? "RGB" : "Gray") + "\" location=\"" + of.place +
        (of.place == "attachment"
             ? ":" + std::to_string(offset) + ":" + std::to_string(block.bytes.size())
             : "") +
        "\"" + (of.interleaved ? " pixelStorage=\"Normal\"" : "") +
        (of.highFirst ? " byteOrder=\"big\"" : "") + (embedded ? "" : block.attributes) + " " +
        of.attributes + ">";
    if (of.place == "inline:hex") text += Hex(block.bytes);
    if (of.place == "inline:base64") text += Base64(block.bytes);
    if (embedded)
        text +=
            "<Data encoding=\"base64\"" + block.attributes + ">" + Base64(block.bytes) + "</Data>";
    return text + of.elements + "</Image>";
}

} // namespace

std::string XisfBytesOf(const std::string& header, const std::string& data) {
    std::string file = "XISF0100";
    for (std::size_t i = 0; i < 4; ++i) file += char(header.size() >> 8 * i & 0xFF);
    return file + std::string(4, '\0') + header + data;
}

std::string XisfBytes(const std::vector<XisfPicture>& pictures) {
    std::vector<Block> blocks(pictures.size());
    std::transform(pictures.begin(), pictures.end(), blocks.begin(), BlockOf);
    std::string header;
    std::string data;
    for (std::size_t start = kStart;; start += kStart) {
        header = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xisf version=\"1.0\">";
        data.clear();
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            header += Element(pictures[i], blocks[i], start + data.size());
            if (pictures[i].place == "attachment") data += blocks[i].bytes;
        }
        header += "</xisf>";
        if (header.size() + 16 > start) continue;
        return XisfBytesOf(header, std::string(start - 16 - header.size(), '\0') + data);
    }
}

} // namespace tarn::testing
