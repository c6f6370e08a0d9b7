#include "image/render/TileDistances.h"

#include <algorithm>

namespace velmor {

void SpreadDistances(CTileGrid<int>& distances) {
    // Two passes, each looking at the neighbours that it has passed.
    const int columns = distances.Columns();
    for (int y = 0; y < distances.Rows(); ++y) {
        const int* below = distances.Row(y - 1);
        int* own = distances.Row(y);
        for (int x = 0; x < columns; ++x)
            own[x] = std::min(own[x], 1 + std::min({below[x - 1], below[x], below[x + 1], own[x - 1]}));
    }
    for (int y = distances.Rows() - 1; y >= 0; --y) {
        const int* above = distances.Row(y + 1);
        int* own = distances.Row(y);
        for (int x = columns - 1; x >= 0; --x)
            own[x] = std::min(own[x], 1 + std::min({above[x - 1], above[x], above[x + 1], own[x + 1]}));
    }
}

} // namespace velmor
