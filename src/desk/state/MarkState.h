// Marks: how the commands on them behave. The marks themselves are asked of the room.
#pragma once

namespace tarn {

struct MarkState {
    bool MarkAdvance = true; // the next file is shown after a mark
};

} // namespace tarn
