// Takes the input for the folder history as it is kept between runs: two numbers, a line of
// folders, a line of rows; what is behind them walks on from there.
#include "Demand.h"
#include "Input.h"

#include "desk/settings/HistoryText.h"
#include "navigation/FolderHistory.h"

#include <memory>

using namespace tarn;
using namespace tarn::fuzz;

namespace {

void DemandWhole(const SelectionState& state) {
    Demand(state.HistHigh >= 0 && state.HistHigh <= kHistoryLimit && state.HistCur >= 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const auto state = std::make_unique<SelectionState>();
    state->HistHigh = input.Number();
    state->HistCur = input.Number();
    const std::string folders = input.Line();
    const std::string rows = input.Line();
    UnpackHistory(*state, folders, rows);
    DemandWhole(*state);
    Demand(state->HistCur <= state->HistHigh);

    const auto again = std::make_unique<SelectionState>();
    again->HistHigh = state->HistHigh;
    again->HistCur = state->HistCur;
    UnpackHistory(*again, PackFolders(*state), PackRows(*state));
    Demand(again->HistHigh == state->HistHigh && again->HistCur == state->HistCur);
    Demand(again->HistFolderPath == state->HistFolderPath);
    Demand(again->HistFileIndex == state->HistFileIndex);

    while (!input.IsEmpty()) {
        switch (const int step = input.Byte(); step % 4) {
        case 0:
            RecordFolder(*state, "/" + std::to_string(step));
            break;
        case 1:
            if (auto* row = state->HistRow()) *row = step;
            break;
        case 2:
            if (HasFolderBefore(*state)) --state->HistCur;
            break;
        default:
            if (HasFolderAfter(*state)) ++state->HistCur;
        }
        DemandWhole(*state);
    }
    return 0;
}
