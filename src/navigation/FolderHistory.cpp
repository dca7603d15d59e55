#include "navigation/FolderHistory.h"

#include <algorithm>

namespace tarn {

bool RecordFolder(SelectionState& state, const std::string& path) {
    ++state.HistCur;
    if (state.HistCur >= kHistoryLimit) return false;
    // A full history loses its farthest entry ahead rather than the folder just entered.
    if (state.HistHigh < kHistoryLimit) ++state.HistHigh;
    const auto cur = static_cast<std::size_t>(state.HistCur);
    const auto high = static_cast<std::size_t>(state.HistHigh);
    if (high > cur) {
        std::move_backward(state.HistFolderPath.begin() + cur, state.HistFolderPath.begin() + high,
                           state.HistFolderPath.begin() + high + 1);
        std::move_backward(state.HistFileIndex.begin() + cur, state.HistFileIndex.begin() + high,
                           state.HistFileIndex.begin() + high + 1);
    }
    state.HistFolderPath[cur] = path;
    return true;
}

bool HasFolderBefore(const SelectionState& state) {
    return state.HistCur > 1;
}

int FolderBefore(const SelectionState& state) {
    return std::min(state.HistCur - 1, state.HistHigh);
}

bool HasFolderAfter(const SelectionState& state) {
    return state.HistCur < state.HistHigh;
}

} // namespace tarn
