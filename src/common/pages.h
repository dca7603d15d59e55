// How many pages things fill.
#pragma once

namespace tarn {

// The last page perhaps in part; 0 for no things.
constexpr int PageCount(int things, int perPage) {
    return (things + perPage - 1) / perPage;
}

} // namespace tarn
