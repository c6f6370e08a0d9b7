#include "image/paint/GapMap.h"

#include "image/paint/Passage.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmor {

namespace {

// A way that is a little narrower than the room before it is no gap: hands draw no parallels.
constexpr double leastStep = 1.5;   ///< pixels, of half the width
constexpr double leastShare = 0.25; ///< of half the width

// The distance at the best pixel of a gap is up to so much below half the way between its ends.
constexpr double gridLoss = 0.71;

// Of a pixel, instead of a room.
constexpr int queued = -2;
constexpr int outside = -3;

bool IsClearlyNarrower(int gapSquare, int roomSquare) {
    const double room = std::sqrt(roomSquare);
    return room - std::sqrt(gapSquare) >= std::max(leastStep, leastShare * room);
}

} // namespace

CGapMap::CGapMap(const CMaskPlane& lines, const CRect& window, int gap)
    : m_window(window),
      m_gap(gap),
      m_limit((gap + 1) * (gap + 1) / 4),
      m_rowLength(static_cast<std::size_t>(window.endX - window.x) + 2),
      m_rooms(m_rowLength * (static_cast<std::size_t>(window.endY - window.y) + 2), outside) {
    const CLineDistance distance(lines, window, m_limit);
    FindWideRooms(distance);
    m_widest.assign(static_cast<std::size_t>(m_unions.Count()), m_limit + 1);
    GrowBack(lines, distance);
    m_roots.resize(static_cast<std::size_t>(m_unions.Count()));
    for (int room = 0; room < m_unions.Count(); ++room)
        m_roots[static_cast<std::size_t>(room)] = m_unions.Find(room);
    for (CClosedGap& closed : m_closedGaps)
        closed = {closed.at, RootOf(closed.roomA), RootOf(closed.roomB)};
}

int CGapMap::RoomAt(CPoint at) const {
    return RootOf(m_rooms[IndexOf(at.x - m_window.x, at.y - m_window.y)]);
}

void CGapMap::FindWideRooms(const CLineDistance& distance) {
    CRunJoiner joiner(m_unions);
    for (int y = 0; y < distance.Height(); ++y) {
        joiner.StartRow();
        const std::int16_t* const row = distance.Row(y);
        std::fill_n(&m_rooms[IndexOf(0, y)], distance.Width(), noRoom);
        for (int x = 0; x < distance.Width();) {
            while (x < distance.Width() && row[x] <= m_limit)
                ++x;
            const int first = x;
            while (x < distance.Width() && row[x] > m_limit)
                ++x;
            if (first < x)
                std::fill_n(&m_rooms[IndexOf(first, y)], x - first, joiner.Add(first, x));
        }
    }
}

// The free pixels that are in no wide room, those farthest from lines first.
std::vector<CGapMap::CPixel> CGapMap::NarrowPixels(const CLineDistance& distance) const {
    const auto limit = static_cast<std::size_t>(m_limit);
    std::vector<std::size_t> places(limit + 2);
    const auto forEach = [&](auto visit) {
        for (int y = 0; y < distance.Height(); ++y)
            for (int x = 0; x < distance.Width(); ++x)
                if (const int square = distance.Row(y)[x]; square > 0 && square <= m_limit)
                    visit(x, y, static_cast<std::size_t>(square));
    };
    forEach([&](int, int, std::size_t square) { ++places[square]; });
    std::size_t before = 0;
    for (std::size_t square = limit; square > 0; --square)
        before += std::exchange(places[square], before);
    std::vector<CPixel> pixels(before);
    forEach([&](int x, int y, std::size_t square) {
        pixels[places[square]++] = {static_cast<std::uint16_t>(x), static_cast<std::uint16_t>(y)};
    });
    return pixels;
}

// Level by level, and in a level from where there are rooms already, step by step, so that two rooms meet in the
// middle of a way that is equally wide.
void CGapMap::GrowBack(const CMaskPlane& lines, const CLineDistance& distance) {
    const std::vector<CPixel> pixels = NarrowPixels(distance);
    const auto squareOf = [&](CPixel pixel) { return distance.Row(pixel.y)[pixel.x]; };
    std::vector<CPixel> next;
    for (auto first = pixels.begin(); first != pixels.end();) {
        const int square = squareOf(*first);
        auto last = first;
        for (; last != pixels.end() && squareOf(*last) == square; ++last)
            if (TouchesRoom(*last))
                Queue(next, *last);
        GrowFrom(next, lines, distance);
        for (; first != last; ++first)
            if (m_rooms[IndexOf(first->x, first->y)] == noRoom) {
                Queue(next, *first);
                GrowFrom(next, lines, distance);
            }
    }
}

bool CGapMap::TouchesRoom(CPixel pixel) const {
    const int* const room = &m_rooms[IndexOf(pixel.x, pixel.y)];
    const auto rowLength = static_cast<std::ptrdiff_t>(m_rowLength);
    return std::max({room[-1], room[1], room[-rowLength], room[rowLength]}) >= 0;
}

void CGapMap::Queue(std::vector<CPixel>& next, CPixel pixel) {
    m_rooms[IndexOf(pixel.x, pixel.y)] = queued;
    next.push_back(pixel);
}

// Lets rooms grow over all pixels of one distance that can be reached from those that are queued.
void CGapMap::GrowFrom(std::vector<CPixel>& next, const CMaskPlane& lines, const CLineDistance& distance) {
    for (std::size_t i = 0; i < next.size(); ++i) {
        const CPixel pixel = next[i];
        const std::int16_t square = distance.Row(pixel.y)[pixel.x];
        Join(lines, distance, pixel);
        ForEachNeighbour(pixel, [&](CPixel there, int id) {
            if (id == noRoom && distance.Row(there.y)[there.x] == square)
                Queue(next, there);
        });
    }
    next.clear();
}

// A pixel joins the room of its neighbour farthest from lines, all others that it touches being met there.
void CGapMap::Join(const CMaskPlane& lines, const CLineDistance& distance, CPixel pixel) {
    std::array<int, 4> found{};
    std::size_t count = 0;
    int farthest = -1;
    ForEachNeighbour(pixel, [&](CPixel there, int id) {
        if (id < 0)
            return;
        found[count] = id;
        if (const int square = distance.Row(there.y)[there.x]; square > farthest) {
            farthest = square;
            std::swap(found[0], found[count]);
        }
        ++count;
    });
    const int square = distance.Row(pixel.y)[pixel.x];
    int& room = m_rooms[IndexOf(pixel.x, pixel.y)];
    if (count == 0) {
        room = m_unions.Add();
        m_widest.push_back(square);
        return;
    }
    room = m_unions.Find(found[0]);
    for (std::size_t i = 1; i < count; ++i)
        if (found[i] != found[0])
            Meet(lines, {m_window.x + pixel.x, m_window.y + pixel.y}, square, found[0], found[i]);
}

void CGapMap::Meet(const CMaskPlane& lines, CPoint at, int square, int a, int b) {
    a = m_unions.Find(a);
    b = m_unions.Find(b);
    if (a == b)
        return;
    if (StayApart(lines, at, square, a, b)) {
        m_closedGaps.push_back({at, a, b});
        return;
    }
    const int widest = std::max(m_widest[static_cast<std::size_t>(a)], m_widest[static_cast<std::size_t>(b)]);
    m_widest[static_cast<std::size_t>(m_unions.Unite(a, b))] = widest;
}

bool CGapMap::StayApart(const CMaskPlane& lines, CPoint at, int square, int a, int b) const {
    const int narrower = std::min(m_widest[static_cast<std::size_t>(a)], m_widest[static_cast<std::size_t>(b)]);
    if (narrower <= m_limit && !IsClearlyNarrower(square, narrower))
        return false;
    const double surely = (m_gap + 1) / 2.0 - gridLoss;
    if (m_gap > exactGap || square <= surely * surely)
        return true;
    const std::optional<CPassage> passage = PassageAt(lines, at, m_gap + 1);
    return passage && passage->SquaredLength() <= (m_gap + 1) * (m_gap + 1);
}

} // namespace velmor
