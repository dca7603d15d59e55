#include "desk/batch/KeptFiles.h"

#include "desk/batch/BatchRun.h"
#include "platform/EventPump.h"

namespace tarn {

bool AwaitMarks(Context& m) {
    constexpr int kLooksAgain = 10; // milliseconds
    if (m.marks.AllRead()) return true;
    const BatchRun batch(m);
    while (!m.marks.AllRead()) {
        if (!batch.Step("Marks of this folder are being read")) return false;
        m.events.Sleep(kLooksAgain);
    }
    return true;
}

} // namespace tarn
