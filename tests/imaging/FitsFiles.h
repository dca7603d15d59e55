// FITS files made in code, byte by byte, so that the reader is not tested by its own library.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace tarn::testing {

// A header word as it stands in the file: {"OBJECT", "'M 31'"}, {"BZERO", "32768"}.
struct FitsWord {
    std::string name;
    std::string value;
};

// One picture part. `bits` as BITPIX; `sample` gives the stored number at each place in the order
// of the file, the first axis fastest.
std::string FitsBytes(int bits, const std::vector<int>& axes,
                      const std::function<double(std::size_t)>& sample,
                      const std::vector<FitsWord>& words = {});

// The same as a part behind others.
std::string FitsExtension(int bits, const std::vector<int>& axes,
                          const std::function<double(std::size_t)>& sample,
                          const std::vector<FitsWord>& words = {});

// The same bytes packed by gzip.
std::string Gzipped(const std::string& bytes);

// A night sky of 16 bits: sky at 1000 with noise of about 20, a star of 60000 at (width / 4,
// height / 4) from the top left corner, three pixels wide.
std::string NightSky(int width, int height, const std::vector<FitsWord>& words = {});

} // namespace tarn::testing
