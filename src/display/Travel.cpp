#include "display/Travel.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr int kFarthest = 20; // rows looked at in one direction
constexpr int kShortWay = 5;  // a page of the pane's keys; a longer way is a jump, and goes on

// Rows that are no pictures may lie on the way.
bool IsWayBack(int rowsBack, int count) {
    return count > 2 && rowsBack <= kShortWay && rowsBack < count - rowsBack;
}

} // namespace

void Travel::GoTo(int row, int count) {
    const bool known = count == m_count && count > 0 && m_row >= 0; // the list may have emptied
    if (!known)
        m_back = false;
    else if (row != m_row)
        m_back = IsWayBack((m_row - row + count) % count, count);
    m_row = row;
    m_count = count;
}

// The next such row, -1 when there is none before the way leads back to the row shown.
int Travel::Seek(int from, int by, const std::function<bool(int row)>& wanted) const {
    if (from < 0 || m_count < 1) return -1;
    for (int i = 0, row = from; i < kFarthest; ++i) {
        row = (row + by + m_count) % m_count;
        if (row == m_row) return -1;
        if (wanted(row)) return row;
    }
    return -1;
}

std::vector<int> Travel::Next(const std::function<bool(int row)>& wanted) const {
    const int by = m_back ? -1 : 1;
    const int first = Seek(m_row, by, wanted);
    std::vector<int> rows;
    for (const int row : {first, Seek(first, by, wanted), Seek(m_row, -by, wanted)})
        if (row >= 0 && std::find(rows.begin(), rows.end(), row) == rows.end()) rows.push_back(row);
    return rows;
}

} // namespace tarn
