#include "navigation/Stepping.h"

namespace tarn {

int RowFrom(int row, int by, int count) {
    const int rest = (row + by) % count;
    return rest < 0 ? rest + count : rest;
}

void RecordView(SelectionState& state, int row) {
    if (row != state.FileHistLast && state.FileHistHigh < kHistoryLimit) {
        state.FileHist[static_cast<std::size_t>(state.FileHistHigh)] = row;
        state.FileHistCur = state.FileHistHigh++;
    }
    state.FileHistLast = row;
}

void ClearViews(SelectionState& state) {
    state.FileHistHigh = 0;
    state.FileHistCur = 0;
    state.FileHistLast = -1;
}

void RestartViews(SelectionState& state, int row) {
    ClearViews(state);
    state.FileHistHigh = 1;
    state.FileHist[0] = row;
}

bool CanGoBack(const SelectionState& state) {
    return state.FileHistCur > 0;
}

bool CanGoForward(const SelectionState& state) {
    return state.FileHistCur + 1 < state.FileHistHigh;
}

} // namespace tarn
