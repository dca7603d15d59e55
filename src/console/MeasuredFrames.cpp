#include "console/MeasuredFrames.h"

#include "common/paths.h"
#include "console/ListedPictures.h"

#include <filesystem>
#include <map>

namespace tarn {

namespace {

// What a folder is looked through for.
constexpr char kTypes[] =
    "*.fits;*.fit;*.fts;*.fit*.gz;*.fz;*.xisf;*.cr2;*.cr3;*.nef;*.arw;*.dng;*.raf;*.orf;*.rw2;"
    "*.pef;*.jpg;*.jpeg;*.tif;*.tiff;*.png;*.heic;*.heif;*.avif;*.jxl;*.webp;*.bmp";

} // namespace

MeasuredFrames MeasureOperands(const std::vector<std::string>& operands,
                               const FrameMeasurer& measure, const std::string& without) {
    MeasuredFrames frames;
    std::vector<std::string> files;
    std::map<std::size_t, std::string> faults; // of rows that are no files
    for (const std::string& operand : operands) {
        std::error_code code;
        if (!std::filesystem::is_directory(operand, code)) {
            frames.paths.push_back(operand);
            files.push_back(operand);
            continue;
        }
        const auto names = ListedFiles(operand, kTypes);
        if (!names) {
            faults[frames.paths.size()] = "is not a folder that can be read";
            frames.paths.push_back(operand);
            continue;
        }
        for (const std::string& name : *names) {
            const std::string path = JoinPath(operand, name);
            if (!without.empty() && std::filesystem::equivalent(path, without, code)) continue;
            frames.paths.push_back(path);
            files.push_back(frames.paths.back());
        }
    }
    std::vector<FrameMeasures> measured = measure(files);
    std::size_t next = 0;
    for (std::size_t i = 0; i < frames.paths.size(); ++i) {
        const auto fault = faults.find(i);
        FrameMeasures row;
        if (fault != faults.end())
            row.fault = fault->second;
        else
            row = std::move(measured[next++]);
        frames.measures.push_back(std::move(row));
    }
    return frames;
}

} // namespace tarn
