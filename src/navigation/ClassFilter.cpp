#include "navigation/ClassFilter.h"

namespace tarn {

std::string JoinPatterns(const std::string& patterns, const std::string& more) {
    if (more.empty()) return patterns;
    return patterns.empty() ? more : patterns + ";" + more;
}

std::string StartFileTypes(const SelectionState& state) {
    std::string types;
    if (state.PictureListCheck) types = JoinPatterns(types, state.PictureTypes);
    if (state.VideoListCheck) types = JoinPatterns(types, state.VideoTypes);
    if (state.WebListCheck) types = JoinPatterns(types, state.WebTypes);
    return types;
}

} // namespace tarn
