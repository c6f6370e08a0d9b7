#pragma once

#include "image/clean/DarkGrid.h"

#include <cstddef>
#include <span>
#include <vector>

namespace velmor {

/// What a region of a page looks like, from its area and its moments up to the second.
struct CBlob {
    int number = 0; ///< of the region
    bool isDark = false;
    double area = 0; ///< pixels
    double x = 0;    ///< of its middle
    double y = 0;
    double length = 0; ///< of the rectangle with the same moments
    double width = 0;
    double angle = 0; ///< of its long side against the rows, radians, counter-clockwise, above -pi/2 up to pi/2

    /// How much of that rectangle it fills: 1 for rectangles and ellipses (1.05), little for outlines.
    double Fill() const { return area / (length * width); }
};

/// The connected regions of a page: dark ones, joined at corners too, and those that are not, joined at their
/// sides.
class CBlobs {
public:
    /// May throw std::bad_alloc.
    explicit CBlobs(const CDarkGrid& page);

    const std::vector<CBlob>& All() const { return m_blobs; }
    /// Which region a pixel belongs to; -1 outside the page.
    int NumberAt(int x, int y) const;

private:
    struct CRun {
        int x = 0;
        int endX = 0;
        int region = 0;
        bool isDark = false;
    };
    struct CSums {
        double n = 0, x = 0, y = 0, xx = 0, xy = 0, yy = 0;
    };

    void FindRuns(const CDarkGrid& page, int y);
    void JoinRow(std::size_t row);
    int RootOf(int region);
    void Number();
    static CBlob BlobOf(const CSums& sums);

    CSize m_size;
    std::vector<CRun> m_runs;             ///< of all rows, from left to right
    std::vector<std::size_t> m_rowStarts; ///< in m_runs, with the end behind the last row
    std::vector<int> m_parents;           ///< of regions that were found to be one
    std::vector<CBlob> m_blobs;
};

} // namespace velmor
