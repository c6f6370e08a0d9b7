#pragma once

#include "image/Geometry.h"
#include "image/paint/LineDistance.h"
#include "image/paint/MaskPlane.h"
#include "image/paint/RunAreas.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velmor {

/// Where a gap between two lines has been closed: two rooms have met at a pixel there.
struct CClosedGap {
    CPoint at;
    int roomA;
    int roomB;
};

/// The rooms that the lines of a drawing enclose when gaps up to a size count as closed.
///
/// A watershed of the distance to the lines, by flooding (S. Beucher and F. Meyer, "The morphological approach to
/// segmentation", 1993), with the rule of the trapped ball (S.-H. Zhang et al., "Vectorizing Cartoon Animations",
/// 2009) for what is a room: where a ball wider than the gap has room, it is. From there rooms grow back to the
/// lines, from wide places to narrow ones, so corners are theirs up to the last pixel. Rooms that meet in a gap
/// stay apart; the slopes of the distance lead from the middle of a gap straight to its two ends, and so does the
/// border that is left. What no ball reaches is a room of its own if it is clearly wider than the gap that leads to
/// it, and part of its neighbour otherwise. A gap is as wide as there are free pixels between its ends. The image's
/// border counts as a line. A gap of 0 leaves the 4-connected areas.
class CGapMap {
public:
    static constexpr int noRoom = -1;
    /// Up to this size gaps are measured to the pixel, above it only roughly.
    static constexpr int exactGap = 32;

    /// Of the rooms that reach out of `window`, those parts are found that are inside of it. May throw
    /// std::bad_alloc.
    CGapMap(const CMaskPlane& lines, const CRect& window, int gap);

    const CRect& Window() const { return m_window; }
    /// Rooms have numbers from 0 to RoomEnd() - 1, some of which are not used.
    int RoomEnd() const { return m_unions.Count(); }
    /// Of a pixel inside the window; noRoom for a line pixel.
    int RoomAt(CPoint at) const;
    /// Where gaps have been closed, the widest first; some more than once.
    const std::vector<CClosedGap>& ClosedGaps() const { return m_closedGaps; }

    /// Calls visit(y, x, endX, room) for every run of pixels of one room.
    template<class Visit>
    void ForEachRun(Visit visit) const;

private:
    struct CPixel {
        std::uint16_t x, y; ///< of the window
    };

    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y + 1) * m_rowLength + static_cast<std::size_t>(x + 1);
    }
    int RootOf(int room) const { return room < 0 ? noRoom : m_roots[static_cast<std::size_t>(room)]; }
    void FindWideRooms(const CLineDistance& distance);
    std::vector<CPixel> NarrowPixels(const CLineDistance& distance) const;
    void GrowBack(const CMaskPlane& lines, const CLineDistance& distance);
    bool TouchesRoom(CPixel pixel) const;
    void Queue(std::vector<CPixel>& next, CPixel pixel);
    void GrowFrom(std::vector<CPixel>& next, const CMaskPlane& lines, const CLineDistance& distance);
    /// Calls visit(pixel, room) for the four beside it; the frame of the window has no room.
    template<class Visit>
    void ForEachNeighbour(CPixel pixel, Visit visit) const {
        const int* const room = &m_rooms[IndexOf(pixel.x, pixel.y)];
        const auto rowLength = static_cast<std::ptrdiff_t>(m_rowLength);
        const auto beside = [](int at, int step) { return static_cast<std::uint16_t>(at + step); };
        visit(CPixel{pixel.x, beside(pixel.y, -1)}, room[-rowLength]);
        visit(CPixel{beside(pixel.x, -1), pixel.y}, room[-1]);
        visit(CPixel{beside(pixel.x, 1), pixel.y}, room[1]);
        visit(CPixel{pixel.x, beside(pixel.y, 1)}, room[rowLength]);
    }
    void Join(const CMaskPlane& lines, const CLineDistance& distance, CPixel pixel);
    void Meet(const CMaskPlane& lines, CPoint at, int square, int a, int b);
    bool StayApart(const CMaskPlane& lines, CPoint at, int square, int a, int b) const;

    CRect m_window;
    int m_gap;
    int m_limit; ///< squared distances in the middle of a gap are not above
    std::size_t m_rowLength;
    std::vector<int> m_rooms; ///< of the window and a frame of one pixel around it
    CUnions m_unions;
    std::vector<int> m_widest; ///< for each room the largest squared distance in it, up to m_limit + 1
    std::vector<CClosedGap> m_closedGaps;
    std::vector<int> m_roots;
};

template<class Visit>
void CGapMap::ForEachRun(Visit visit) const {
    for (int y = m_window.y; y < m_window.endY; ++y) {
        const int* const row = &m_rooms[IndexOf(0, y - m_window.y)] - m_window.x;
        for (int x = m_window.x; x < m_window.endX;) {
            const int first = x;
            const int id = row[x];
            const int room = RootOf(id);
            while (x < m_window.endX && (row[x] == id || RootOf(row[x]) == room))
                ++x;
            if (room != noRoom)
                visit(y, first, x, room);
        }
    }
}

} // namespace velmor
