#include "navigation/Stepping.h"

namespace tarn {

int RowFrom(int row, int by, int count) {
    const int rest = (row + by) % count;
    return rest < 0 ? rest + count : rest;
}

void ViewHistory::Record(int row) {
    if (row != m_last && m_high < kHistoryLimit) {
        m_rows[static_cast<std::size_t>(m_high)] = row;
        m_cur = m_high++;
    }
    m_last = row;
}

void ViewHistory::RowCame(int row) {
    for (int entry = 0; entry < m_high; ++entry)
        if (std::int32_t& viewed = m_rows[static_cast<std::size_t>(entry)]; viewed >= row) ++viewed;
    if (m_last >= row) ++m_last;
}

void ViewHistory::Clear() {
    m_high = 0;
    m_cur = 0;
    m_last = -1;
}

void ViewHistory::Restart(int row) {
    Clear();
    m_high = 1;
    m_rows[0] = row;
}

} // namespace tarn
