#include "image/paint/Filters.h"

#include "image/paint/LineEdges.h"
#include "image/paint/PaintBounds.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

class CSmoothing {
public:
    explicit CSmoothing(CCelImg& cel)
        : m_cel(cel),
          m_edges(LineMaskOf(cel)),
          m_planes{cel.PlaneOf(Channel::Red).data(), cel.PlaneOf(Channel::Green).data(),
                   cel.PlaneOf(Channel::Blue).data()} {
        for (std::ptrdiff_t i = 0; i < 9; ++i)
            m_neighbours[static_cast<std::size_t>(i)] = (i / 3 - 1) * cel.Width() - (i % 3 - 1);
    }

    CRect Run() {
        for (int y = 0; y < m_cel.Height(); ++y)
            m_edges.VisitRow(y, [&](const CLineEdge& edge) { Blend(edge, y); });
        return m_bounds.Rect();
    }

private:
    void Blend(const CLineEdge& edge, int y) {
        const std::size_t index = m_cel.IndexOf(edge.x, y);
        for (std::uint8_t* const plane : m_planes) {
            std::uint8_t* const own = plane + index;
            int sum = 0;
            ForEachLine(edge.lines, [&](std::size_t line) { sum += own[m_neighbours[line]]; });
            *own = edge.Blend(*own, sum);
        }
        std::uint8_t& alpha = m_cel.PlaneOf(Channel::Alpha)[index];
        alpha = std::max(alpha, static_cast<std::uint8_t>(edge.weight));
        m_bounds.AddSpan(y, edge.x, edge.x + 1);
    }

    CCelImg& m_cel;
    CLineEdges m_edges;
    std::array<std::uint8_t*, 3> m_planes;
    std::array<std::ptrdiff_t, 9> m_neighbours{}; ///< from a pixel to each of CLineEdge::lines
    CPaintBounds m_bounds;
};

} // namespace

CPaintResult Smooth(CCelImg& image) {
    if (image.LineMask().empty() || image.GetLoadState() != LoadState::Cel)
        return {CStatus::Failure("Internal Error :  Smooth called with no cel b/w image"), {}};
    return PaintWithMemory([&image] { return CSmoothing(image).Run(); });
}

} // namespace velmor
