// The walk of a full-screen show through its entries: which index comes next, and when nothing is
// left to show. Every index is taken by true remainder, so the walk goes round at both ends.
#pragma once

#include "slides/SlideKeys.h"

#include <vector>

namespace tarn {

class SlideSequence {
public:
    // `count` entries, at least 1, beginning at `start`.
    SlideSequence(int count, int start);

    int Index() const { return m_index; }
    int Count() const { return m_count; }
    bool IsLast() const { return m_index + 1 == m_count; }

    // The entry stands on the screen.
    void Shown() { m_passedOver = 0; }

    // The entry cannot be shown: on in the direction of travel. False when a whole pass showed
    // nothing.
    bool PassOver();

    // On from an entry that was shown. `back`: what cannot be shown is then passed over backwards.
    void Leave(SlideMove move, bool back);

    void GoTo(int index);

    // The next step forward or back shows this entry once more.
    void ShowAgain() { m_again = true; }
    void Forget() { m_again = false; } // the picture has gone

    // Entries came or went; where this one went, the one behind it stands in its place. False when
    // none is left.
    bool Resize(int count);

    // The indexes to make ready while this one stands: two in the direction of travel, then one
    // behind. Fewer in a short walk, never this one.
    std::vector<int> Expected() const;

private:
    int Wrapped(int index) const;

    int m_count;
    int m_index;
    int m_passedOver = 0;       // since the last entry that was shown
    bool m_back = false;        // which way a file that cannot be shown is passed over
    bool m_travelsBack = false; // which way the user goes
    bool m_again = false;
};

} // namespace tarn
