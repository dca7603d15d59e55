#include "console/NamedFrames.h"

#include "common/paths.h"
#include "console/ListedPictures.h"

#include <filesystem>

namespace tarn {

namespace {

// What a folder is looked through for.
constexpr char kTypes[] =
    "*.fits;*.fit;*.fts;*.fit*.gz;*.fz;*.xisf;*.cr2;*.cr3;*.nef;*.arw;*.dng;*.raf;*.orf;*.rw2;"
    "*.pef;*.jpg;*.jpeg;*.tif;*.tiff;*.png;*.heic;*.heif;*.avif;*.jxl;*.webp;*.bmp";

} // namespace

std::vector<NamedFrame> FramesOf(const std::vector<std::string>& operands) {
    std::vector<NamedFrame> frames;
    for (const std::string& operand : operands) {
        std::error_code code;
        if (!std::filesystem::is_directory(operand, code)) {
            frames.push_back({operand, {}});
            continue;
        }
        const auto names = ListedFiles(operand, kTypes);
        if (!names) {
            frames.push_back({operand, "is not a folder that can be read"});
            continue;
        }
        for (const std::string& name : *names) frames.push_back({JoinPath(operand, name), {}});
    }
    return frames;
}

} // namespace tarn
