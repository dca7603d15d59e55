#include "console/decoders/ClipFiles.h"

#include "common/paths.h"
#include "console/decoders/OpenHistory.h"
#include "history/Changes.h"
#include "sky/clips/TakeFrames.h"

namespace tarn {

std::vector<TakenFrame> TakeBestOut(const TakeOrder& order) {
    OpenHistory open;
    Changes changes(open.history, "Best frames of '" + LastPart(order.clip) + "'");
    std::vector<TakenFrame> taken = TakeFrames(order, changes);
    changes.SetWhat(std::to_string(changes.Count()) + " best frames of '" + LastPart(order.clip) +
                    "'");
    return taken;
}

} // namespace tarn
