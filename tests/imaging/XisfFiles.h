// XISF files made in code, byte by byte; only packing is done by the libraries that also unpack.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace tarn::testing {

struct XisfPicture {
    std::string format = "UInt16";
    int width = 3;
    int height = 2;
    int channels = 1;
    bool colour = false;      // else gray
    bool interleaved = false; // the channels of a pixel together
    bool highFirst = false;
    std::function<double(std::size_t)> sample = [](std::size_t i) { return double(i); };

    std::string place = "attachment"; // or "inline:base64", "inline:hex", "embedded"
    std::string codec;                // "zlib", "lz4", "lz4hc", "zstd"; empty: not packed
    bool shuffled = false;
    int pieces = 1;
    std::string attributes; // further ones of the element: checksum="..."
    std::string elements;   // within it: FITS keywords, properties
};

// The samples of `picture` are numbered plane after plane, however they are stored.
std::string XisfBytes(const std::vector<XisfPicture>& pictures);

// A file of a header as it is given, with the data behind it, at byte 16 + its length.
std::string XisfBytesOf(const std::string& header, const std::string& data = {});

} // namespace tarn::testing
