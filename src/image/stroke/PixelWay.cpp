#include "image/stroke/PixelWay.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace velmor {

namespace {

constexpr double stepsInPixel = 4;
constexpr double mostSteps = 1 << 18;
constexpr double far = 1 << 24; ///< from any image, and still exact

bool TouchAtCorner(CPoint a, CPoint b) {
    return std::abs(a.x - b.x) == 1 && std::abs(a.y - b.y) == 1;
}

bool TouchAtEdge(CPoint a, CPoint b) {
    return std::abs(a.x - b.x) + std::abs(a.y - b.y) == 1;
}

} // namespace

CPoint PixelOf(CRealPoint point) {
    const auto floored = [](double value) { return static_cast<int>(std::floor(std::clamp(value, -far, far))); };
    return {floored(point.x), floored(point.y)};
}

std::vector<CPoint> CPixelWay::Move(CRealPoint to) {
    std::vector<CPoint> pixels;
    const CRealPoint from = m_at.value_or(to);
    m_at = to;
    const double length = std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
    const double steps = std::clamp(std::ceil(length * stepsInPixel), 1.0, mostSteps);
    for (int i = 1; i <= static_cast<int>(steps); ++i)
        Add(PixelOf(Between(from, to, i / steps)), pixels);
    return pixels;
}

std::vector<CPoint> CPixelWay::End() {
    std::vector<CPoint> pixels;
    if (m_pending)
        pixels.push_back(*std::exchange(m_pending, std::nullopt));
    return pixels;
}

void CPixelWay::Add(CPoint pixel, std::vector<CPoint>& pixels) {
    if (pixel == m_pending || (!m_pending && pixel == m_done))
        return;
    const bool isInCorner = m_pending && m_done && TouchAtCorner(*m_done, pixel) &&
                            TouchAtEdge(*m_done, *m_pending) && TouchAtEdge(*m_pending, pixel);
    if (m_pending && !isInCorner) {
        m_done = m_pending;
        pixels.push_back(*m_pending);
    }
    m_pending = pixel;
}

} // namespace velmor
