// Which row comes next, and the history of the rows viewed in one folder. No widgets.
#pragma once

#include "desk/state/SelectionState.h"

namespace tarn {

// So many rows on from `row`, or back, in a list of `count` rows (at least 1), round at both ends
// by true remainder, so that page steps work in short lists too.
int RowFrom(int row, int by, int count);

// A row was viewed: appended unless it is the one seen last or the list of views is full.
void RecordView(SelectionState& state, int row);

// The list of views starts anew: empty, or with this row (-1 for none shown) as its one entry.
void ClearViews(SelectionState& state);
void RestartViews(SelectionState& state, int row);

bool CanGoBack(const SelectionState& state);
bool CanGoForward(const SelectionState& state);

} // namespace tarn
