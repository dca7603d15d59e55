// What is known of the picture on screen: its file, its size, and what its camera wrote into it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tarn {

// A record lives from one picture to the next. Fields marked "stays" are not emptied by a read, so
// that they hold a value of this picture only when it had the tag; all texts are UTF-8 and empty
// when unknown.
struct PictureInfo {
    // Set by the caller before a read.
    std::string Filename;        // full path
    std::string FileNameOnly;    // its last part
    std::int32_t ImageWidth = 0; // pixels of the loaded picture, 0 when unknown
    std::int32_t ImageHeight = 0;
    std::string FileDate; // "06/22/2004 8:15:30 PM"; the date pass sets it itself

    bool NoExif = false;    // no camera data; cleared by the caller before each picture
    bool ExifFound = false; // camera data were found by the last read

    std::string CameraName;          // model, with the make in front when the model is one word
    std::string ExpCamera;           // one word of it, with a blank behind
    std::int16_t ExpOrientation = 0; // orientation value 1..8; stays, cleared by the caller
    std::string ExpTime;             // "1/125s", "02m 05s"
    std::string ExpAperture;         // "f/5.6"
    std::string ExpProgram;
    std::string ExpSpeed; // "400 ISO"
    std::string ExpBias;  // "+0.7 EV"
    std::string ExpFocus;
    std::string ExpFocusShort; // ", AF"
    std::string ExpMeter;
    std::string ExpFlash;         // "Flash" when it fired
    std::string ExpFlashShort;    // ", Flash"
    bool FlashFired = false;      // stays
    std::string ExpMagnification; // "1.6x" against a 50 mm lens on film
    std::string ExpMegapixels;    // "6.3 Mp"
    std::string ExpSizeLine;      // "6.3 Mp 3072 x 2048 - 2.1 MB"
    float FilmFactor = 0;         // sensor to film focal length, 0 when unknown; stays

    std::string CameraDate;             // "yyyy:mm:dd hh:mm:ss" as the camera wrote it; stays
    std::int16_t CameraDateOffset = 0;  // its place behind PictureDataOffset; stays
    std::int16_t CameraDateIndex = 0;   // row of the date in PanelRows; stays
    std::int16_t PictureDataOffset = 0; // file offset of the first tag entry: 22, 10 or 40; stays
    std::string PictureDate;            // "06/22/2004 8:15:30 PM"; stays in the date pass
    bool DatesDiffer = false; // file and picture date differ; stays, cleared by the caller

    std::array<std::string, 14> CameraDataLines; // 0 to 12 are used; 3 and on stay without data

    // What the window shows.
    std::vector<std::string> PanelRows; // rows of List1: the lines, then those of the header
    std::string FileSizeText;           // "2.1 MB", "977 KB"
    std::string MpixelText;             // "6.3 Mp"
};

// Another file: nothing is known of it but its name.
inline void ForgetPicture(PictureInfo& info) {
    PictureInfo nothing;
    nothing.Filename = info.Filename;
    nothing.FileNameOnly = info.FileNameOnly;
    info = nothing;
}

} // namespace tarn
