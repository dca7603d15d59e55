#include "console/decoders/Conversion.h"

#include "common/paths.h"
#include "console/decoders/OpenHistory.h"
#include "convert/ConvertPicture.h"
#include "convert/ConvertTarget.h"
#include "history/Changes.h"
#include "platform/Files.h"
#include "platform/WriteInPlace.h"

#include <algorithm>
#include <set>

namespace tarn {

namespace {

constexpr int kAnySide = 0xFFFF; // pixels

// What the copy takes of the picture; empty for all of it, which a text is drawn on.
QSize Wanted(const ConvertOptions& options) {
    const int width = options.maxWidth;
    const int height = options.maxHeight;
    if (!options.text.empty() || (width <= 0 && height <= 0)) return {};
    return {width > 0 ? width : kAnySide, height > 0 ? height : kAnySide};
}

// Part of a damaged picture is no picture to make a copy of.
std::string Load(ImgX& picture, const std::string& path, QSize wanted) {
    std::string error = picture.LoadFile(path, wanted);
    if (error.empty() || picture.HasImage()) return error;
    return picture.LoadWithSystemReader(path).empty() ? std::string() : error;
}

bool IsSpared(const Files& files, const std::string& target, const ConvertOptions& options) {
    return std::any_of(options.spared.begin(), options.spared.end(),
                       [&](const std::string& file) { return files.IsSameFile(file, target); });
}

} // namespace

ConvertedFile WriteConverted(const std::string& path, const std::string& folder,
                             const ConvertOptions& options) {
    static OpenHistory open;
    Files* files = open.files.get();
    static std::set<std::string> written; // by this run
    const ConvertTarget target =
        folder.empty() ? TargetBeside(*files, path) : TargetIn(*files, folder, path);
    ConvertedFile result{target.path, {}};
    if (target.path.empty() || written.contains(target.path)) {
        result.error = "'" + target.name + "' already exists, aborted";
        return result;
    }
    if (IsSpared(*files, target.path, options)) {
        result.error = "'" + target.name + "' is to be converted itself, aborted";
        return result;
    }
    ImgX picture;
    result.error = Load(picture, path, Wanted(options));
    if (!result.error.empty()) return result;
    ConvertOptions turned = options;
    turned.orientation = OrientationOf(picture);
    const Converted converted = ConvertPicture(picture, turned);
    result.error = converted.error;
    Changes changes(open.history, "Convert '" + LastPart(path) + "' to '" + target.name + "'");
    if (result.error.empty() && WriteInPlace(changes, target.path, converted.jpeg, &result.error))
        written.insert(target.path);
    return result;
}

} // namespace tarn
