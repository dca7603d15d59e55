// How keys step in the picture windows.
#pragma once

#include "desk/Context.h"

#include <set>

class QKeyEvent;

namespace tarn {

// To another file of the list, while the keyboard stays with the window. While a show runs, the
// current file is the show's.
void StepFiles(const Context& context, int rows);

// A key acts on its release, and only when the same window saw its press. Up and Down act again
// and again while they are held, then not once more on their release.
class HeldKeys {
public:
    // The key code that acts now, or 0. `ready` is false while the picture stepped to last has not
    // been painted: a repeat that comes too early is left out, so that no queue builds up.
    int Press(const QKeyEvent& event, bool ready);
    int Release(const QKeyEvent& event);

private:
    std::set<int> m_down;
    std::set<int> m_repeated;
};

} // namespace tarn
