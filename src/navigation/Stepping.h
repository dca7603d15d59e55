// Which row comes next, and the history of the rows viewed in one folder. No widgets.
#pragma once

#include "desk/state/SelectionState.h"

#include <array>
#include <cstdint>

namespace tarn {

// So many rows on from `row`, or back, in a list of `count` rows (at least 1), round at both ends
// by true remainder, so that page steps work in short lists too.
int RowFrom(int row, int by, int count);

// Rows in the order viewed since the folder was entered, and where the way back stands.
class ViewHistory {
public:
    // A row was viewed: appended unless it is the one seen last or the list of views is full.
    void Record(int row);

    // Anew: empty, or with this row (-1 for none shown) as its one entry.
    void Clear();
    void Restart(int row);

    bool CanGoBack() const { return m_cur > 0; }
    bool CanGoForward() const { return m_cur + 1 < m_high; }
    bool IsBehind() const { return m_cur < m_high; } // which lets the way forward be asked for
    int Back() { return At(--m_cur); }
    int Forward() { return At(++m_cur); }

    // The same file has another row, as the list is counted anew.
    void RowIsNow(int row) { m_last = row; }
    void RowCame(int row); // those from there on are one further

    int Count() const { return m_high; }
    int At(int entry) const { return m_rows[static_cast<std::size_t>(entry)]; }
    int Last() const { return m_last; }

private:
    std::array<std::int32_t, kHistoryLimit + 1> m_rows{}; // FileHist
    int m_cur = 0;                                        // FileHistCur
    int m_high = 0;                                       // FileHistHigh
    int m_last = -1;                                      // FileHistLast
};

} // namespace tarn
