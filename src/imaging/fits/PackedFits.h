// FITS files that were packed as one whole, by gzip.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tarn {

// How many of a file's first bytes say what is packed in it.
inline constexpr std::size_t kPackedStart = 512;

// Whether a file with these first bytes unpacks to a FITS file.
bool IsPackedFits(std::string_view start);

class UnpackedFile;

// The file itself, or what it unpacks to. That stays in memory for a while, since a picture's
// header and samples are asked for one after the other.
class PlainFits {
public:
    PlainFits(const std::string& path, std::string& error);

    // Holds as long as this lives.
    const std::string& Path() const { return m_path; }

private:
    std::shared_ptr<const UnpackedFile> m_unpacked; // null for the file itself
    std::string m_path;
};

} // namespace tarn
