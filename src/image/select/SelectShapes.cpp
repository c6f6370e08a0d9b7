#include "image/select/SelectShapes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

namespace velmor {

namespace {

/// Where a side of a polygon crosses the middle of a row, and whether it goes up.
struct CCrossing {
    double x = 0;
    int turn = 0;

    bool operator<(const CCrossing& other) const { return x < other.x; }
};

std::vector<CRealPoint> Numbers(std::span<const CRealPoint> line) {
    std::vector<CRealPoint> points;
    for (const CRealPoint& point : line)
        if (std::isfinite(point.x) && std::isfinite(point.y))
            points.push_back(point);
    return points;
}

// The rows whose middles lie between two heights: first to last.
std::pair<int, int> RowsBetween(double low, double high, int height) {
    const auto rowFrom = [height](double y) {
        return static_cast<int>(std::ceil(std::clamp(y - 0.5, -1.0, static_cast<double>(height))));
    };
    return {std::max(rowFrom(low), 0), std::min(rowFrom(high), height)};
}

void AddCrossings(CRealPoint a, CRealPoint b, std::vector<std::vector<CCrossing>>& rows) {
    const int turn = a.y < b.y ? 1 : -1;
    if (turn < 0)
        std::swap(a, b);
    const auto [first, end] = RowsBetween(a.y, b.y, static_cast<int>(rows.size()));
    for (int row = first; row < end; ++row)
        rows[static_cast<std::size_t>(row)].push_back({a.x + (row + 0.5 - a.y) * (b.x - a.x) / (b.y - a.y), turn});
}

// The first pixel whose middle is not left of x.
int PixelFrom(double x, int width) {
    return static_cast<int>(std::ceil(std::clamp(x - 0.5, 0.0, static_cast<double>(width))));
}

bool IsNear(CColor a, CColor b, int tolerance) {
    return std::abs(a.red - b.red) <= tolerance && std::abs(a.green - b.green) <= tolerance &&
           std::abs(a.blue - b.blue) <= tolerance && std::abs(a.alpha - b.alpha) <= tolerance;
}

/// Adds what hangs together, run by run.
class CAreaWalk {
public:
    CAreaWalk(const CSelectionMask& like) : m_like(like), m_area(like.Size()) {}

    CSelectionMask From(CPoint pixel) {
        Visit(pixel.y, pixel.x, pixel.x + 1);
        while (!m_runs.empty()) {
            const CRect run = m_runs.back();
            m_runs.pop_back();
            Visit(run.y - 1, run.x, run.endX);
            Visit(run.y + 1, run.x, run.endX);
        }
        m_area.Measure();
        return std::move(m_area);
    }

private:
    bool IsNew(int x, int y) const { return m_like.Has(x, y) && !m_area.Has(x, y); }
    // Takes the runs of a row that touch pixels x to endX - 1.
    void Visit(int y, int x, int endX) {
        for (; x < endX; ++x) {
            if (!IsNew(x, y))
                continue;
            int first = x;
            while (IsNew(first - 1, y))
                --first;
            while (IsNew(x, y))
                ++x;
            m_area.AddRun(y, first, x);
            m_runs.push_back({first, y, x, y + 1});
        }
    }

    const CSelectionMask& m_like;
    CSelectionMask m_area;
    std::vector<CRect> m_runs;
};

} // namespace

CSelectionMask SelectRectangle(CSize image, const CRect& rect) {
    CSelectionMask mask(image);
    for (int y = std::max(rect.y, 0); y < std::min(rect.endY, image.height); ++y)
        mask.AddRun(y, rect.x, rect.endX);
    mask.Measure();
    return mask;
}

CSelectionMask SelectPolygon(CSize image, std::span<const CRealPoint> line) {
    const std::vector<CRealPoint> points = Numbers(line);
    std::vector<std::vector<CCrossing>> rows(static_cast<std::size_t>(image.height));
    for (std::size_t i = 0; i < points.size(); ++i)
        AddCrossings(points[i], points[(i + 1) % points.size()], rows);
    CSelectionMask mask(image);
    for (int y = 0; y < image.height; ++y) {
        std::vector<CCrossing>& crossings = rows[static_cast<std::size_t>(y)];
        std::ranges::sort(crossings, std::less<>());
        int turns = 0;
        for (std::size_t i = 0; i + 1 < crossings.size(); ++i) {
            turns += crossings[i].turn;
            if (turns != 0)
                mask.AddRun(y, PixelFrom(crossings[i].x, image.width), PixelFrom(crossings[i + 1].x, image.width));
        }
    }
    mask.Measure();
    return mask;
}

CSelectionMask SelectColor(const CCelImg& image, CPoint pixel, int tolerance, bool connected) {
    CSelectionMask like({image.Width(), image.Height()});
    if (pixel.x < 0 || pixel.y < 0 || pixel.x >= image.Width() || pixel.y >= image.Height())
        return like;
    const CColor color = image.ColorAt(pixel.x, pixel.y);
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x)
            if (IsNear(image.ColorAt(x, y), color, tolerance))
                like.AddRun(y, x, x + 1);
    if (connected)
        return CAreaWalk(like).From(pixel);
    like.Measure();
    return like;
}

} // namespace velmor
