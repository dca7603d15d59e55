#include "desk/settings/HistoryText.h"

#include "common/numbers.h"
#include "common/text.h"

#include <algorithm>

namespace tarn {

std::string PackFolders(const SelectionState& state) {
    std::string text;
    for (int i = 0; state.HistHigh >= 1 && i <= state.HistHigh; ++i)
        text += state.HistFolderPath[static_cast<std::size_t>(i)] + "+";
    return text;
}

std::string PackRows(const SelectionState& state) {
    std::string text;
    for (int i = 0; state.HistHigh >= 1 && i <= state.HistHigh; ++i)
        text += std::to_string(state.HistFileIndex[static_cast<std::size_t>(i)]) + "+";
    return text;
}

void UnpackHistory(SelectionState& state, const std::string& folders, const std::string& rows) {
    const auto paths = Split(folders, '+');
    const auto indexes = Split(rows, '+');
    // The last part stands behind the last "+" and is no entry.
    const int whole = static_cast<int>(std::min(paths.size(), indexes.size())) - 2;
    state.HistHigh = std::clamp(state.HistHigh, 0, std::clamp(whole, 0, kHistoryLimit));
    state.HistCur = std::clamp(state.HistCur, 0, state.HistHigh);
    for (int i = 0; state.HistHigh >= 1 && i <= state.HistHigh; ++i) {
        const auto at = static_cast<std::size_t>(i);
        state.HistFolderPath[at] = paths[at];
        state.HistFileIndex[at] = ParseInt32(indexes[at]).value_or(0);
    }
}

} // namespace tarn
