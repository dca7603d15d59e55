// What the loader asks of a way of reading picture files.
#pragma once

#include <QImage>
#include <QSize>

#include <cstdio>
#include <string>

namespace tarn {

// Both functions start at the beginning of the file and leave `error` empty when all went well.
struct PictureFormat {
    // Pixels from the header, 0 x 0 when it is not to be had from there.
    QSize (*size)(std::FILE* file, std::string& error);

    // Pixels of at least `wanted` where the format can read reduced, or all of them. Format_RGB32,
    // or Format_ARGB32 where something shines through. A null image and an error, or both an image
    // and an error when a part could be read.
    QImage (*decode)(std::FILE* file, QSize wanted, std::string& error);

    bool reduces; // decode can read less than all pixels
    bool upright; // decode, and so size, turns by what the file says of its orientation

    // The colour profile of the file; empty for none, or where the decoded picture has it. Null
    // where pixels come in the colours of the screen.
    std::string (*profile)(std::FILE* file);

    // Of a format that turns some of its files: whether this is one. Null for the others.
    bool (*turns)(std::FILE* file) = nullptr;
};

extern const PictureFormat kJpegFormat;    // the camera's own files, reduced while decoding
extern const PictureFormat kFitsFormat;    // pictures of telescopes, stretched for the screen
extern const PictureFormat kRawFormat;     // what a sensor recorded
extern const PictureFormat kHeifFormat;    // HEIF and AVIF
extern const PictureFormat kJxlFormat;     // JPEG XL
extern const PictureFormat kTiffFormat;    // by the toolkit, in parts where it gives up
extern const PictureFormat kToolkitFormat; // whatever the toolkit has a reader for

// What a module that reads one format exports.
struct FormatModule {
    const PictureFormat* format;
    std::string (*version)(); // of the library that runs
};

// Whether a file that says how it is to be turned is turned by its reader.
bool IsContainerTurned(std::FILE* file);

inline constexpr std::size_t kLargestProfile = 4U << 20U; // bytes, unpacked

// The colour profile of a JPEG file; empty when it has none.
std::string ProfileOfJpeg(std::FILE* file);

// The memory that its decode takes, in bytes (DecodeCost); 0 for a header that cannot be read.
long long JpegCost(std::FILE* file, QSize wanted);

// Why the JPEG library cannot be used; empty when it can.
std::string JpegReaderError();

// Bytes that one picture may take when decoded: those of the DecodeBudget.
long long PictureMemoryLimit();

} // namespace tarn
