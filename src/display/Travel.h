// Which way the user goes through the list, and which rows will therefore probably come next.
#pragma once

#include <functional>
#include <vector>

namespace tarn {

class Travel {
public:
    // The row now shown of so many. One row back turns round, also over the list's begin; any other
    // move goes on from there.
    void GoTo(int row, int count);

    // The next rows for which `wanted` holds, nearest first: two ahead, one behind.
    std::vector<int> Next(const std::function<bool(int row)>& wanted) const;

private:
    int Seek(int from, int by, const std::function<bool(int row)>& wanted) const;

    int m_row = -1;
    int m_count = 0;
    bool m_back = false;
};

} // namespace tarn
