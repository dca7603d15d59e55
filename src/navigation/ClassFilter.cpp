#include "navigation/ClassFilter.h"

#include "common/paths.h"

namespace tarn {

namespace {

std::string WithFitsAndRaw(std::string types, const SelectionState& state,
                           const ClassBoxes& boxes) {
    if (boxes.fits) types = JoinPatterns(types, state.FitsClassTypes());
    if (boxes.raw) types = JoinPatterns(types, state.RawTypes);
    return types;
}

} // namespace

std::string JoinPatterns(const std::string& patterns, const std::string& more) {
    if (more.empty()) return patterns;
    return patterns.empty() ? more : patterns + ";" + more;
}

bool IsPattern(std::string_view pattern) {
    return pattern.find(kSeparator) == std::string_view::npos;
}

std::string StartFileTypes(const SelectionState& state) {
    const ClassBoxes boxes{state.PictureListCheck != 0, state.VideoListCheck != 0,
                           state.WebListCheck != 0};
    return TypesFromTexts(boxes, state.PictureTypes, state.VideoTypes, state.WebTypes);
}

bool HasNoClass(const ClassBoxes& boxes) {
    return !boxes.pictures && !boxes.videos;
}

std::string TypesFromPictures(const SelectionState& state, const ClassBoxes& boxes) {
    std::string types = boxes.pictures ? state.PictureTypes : std::string();
    if (boxes.videos) types = JoinPatterns(types, state.VideoTypes);
    return WithFitsAndRaw(types, state, boxes);
}

std::string TypesFromVideos(const SelectionState& state, const ClassBoxes& boxes) {
    std::string types = boxes.videos ? state.VideoTypes : std::string();
    if (boxes.pictures) types = JoinPatterns(types, state.PictureTypes);
    return WithFitsAndRaw(types, state, boxes);
}

std::string TypesFromWeb(const SelectionState& state, const ClassBoxes& boxes) {
    std::string types = boxes.web ? state.WebTypes : std::string();
    if (boxes.pictures) types = JoinPatterns(types, state.PictureTypes);
    if (boxes.videos) types = JoinPatterns(types, state.VideoTypes);
    return WithFitsAndRaw(types, state, boxes);
}

std::string TypesAfterTick(bool ticked, const std::string& fileTypes, const std::string& more,
                           std::string& saved) {
    if (!ticked) return saved;
    saved = fileTypes;
    return JoinPatterns(fileTypes, more);
}

std::string TypesFromTexts(const ClassBoxes& boxes, const std::string& pictures,
                           const std::string& videos, const std::string& web) {
    std::string types;
    if (boxes.pictures) types = JoinPatterns(types, pictures);
    if (boxes.videos) types = JoinPatterns(types, videos);
    if (boxes.web) types = JoinPatterns(types, web);
    return types;
}

} // namespace tarn
