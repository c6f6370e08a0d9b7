#include "scene/StrokePainter.h"

#include <utility>

namespace velmor {

namespace {

// What pressure does to a tool; null when nothing.
const CPressureRange* RangeOf(const CPenSettings& settings, CelTool tool, bool isPressed) {
    const CPressureRange* const range = tool == CelTool::Pen ? &settings.pens : &settings.brushes;
    return isPressed && range->isOn ? range : nullptr;
}

void Add(CPaintResult& all, const CPaintResult& more) {
    all = {more.status, Union(all.changed, more.changed)};
}

} // namespace

CPoint StampPixel(CRealPoint point) {
    return PixelOf({point.x, point.y + 1});
}

bool CStrokePainter::IsWanted(const CPenSettings& settings, CelTool tool, bool isPressed) {
    return settings.stabilizer != StabilizerKind::None || RangeOf(settings, tool, isPressed) != nullptr;
}

bool CStrokePainter::Press(CelTool tool, const CPenSettings& settings, bool isPressed, const CStrokePoint& at,
                           double pixel) {
    if (!m_painting.Begin(tool, StampPixel(at.at)))
        return false;
    m_settings = settings;
    const std::optional<CToolTip> tip = m_painting.Tip();
    m_range = tip ? RangeOf(m_settings, tool, isPressed) : nullptr;
    m_width = tip ? tip->width : 1;
    m_pressure = at.pressure;
    m_stabilizer = CStabilizer(settings.stabilizer, settings.stabilizerLength * pixel);
    m_curve = {};
    m_pixels = {};
    m_stamped.reset();
    m_press = at;
    return true;
}

void CStrokePainter::Begin(CPaintResult& result) {
    if (const std::optional<CStrokePoint> press = std::exchange(m_press, std::nullopt))
        Paint(m_curve.Move(m_stabilizer.Move(*press).front()), result);
}

CPaintResult CStrokePainter::Move(std::span<const CStrokePoint> way) {
    CPaintResult result;
    Begin(result);
    for (const CStrokePoint& point : way) {
        m_pressure = point.pressure;
        for (const CStrokePoint& onLine : m_stabilizer.Move(point))
            Paint(m_curve.Move(onLine), result);
    }
    return result;
}

CPaintResult CStrokePainter::ReleaseStraight(CRealPoint to, double pressure) {
    m_stabilizer = CStabilizer(StabilizerKind::None, 0);
    m_pressure = pressure;
    if (m_press)
        m_press->pressure = pressure;
    return Release(to);
}

CPaintResult CStrokePainter::Release(CRealPoint at) {
    CPaintResult result;
    Begin(result);
    for (const CStrokePoint& onLine : m_stabilizer.Release({at, m_pressure}))
        Paint(m_curve.Move(onLine), result);
    Paint(m_curve.End(), result);
    if (m_range == nullptr) {
        const std::vector<CPoint> last = m_pixels.End();
        if (!m_stamped) { // a dot
            Add(result, m_painting.End(last.front()));
            return result;
        }
        Stamp(last, result);
    }
    m_painting.Cancel();
    return result;
}

void CStrokePainter::Paint(const std::vector<CStrokePoint>& line, CPaintResult& result) {
    for (const CStrokePoint& point : line) {
        if (!result.status)
            return;
        if (m_range != nullptr)
            Add(result, m_painting.Sweep(PlaceOf(point)));
        else
            Stamp(m_pixels.Move({point.at.x, point.at.y + 1}), result);
    }
}

void CStrokePainter::Stamp(const std::vector<CPoint>& pixels, CPaintResult& result) {
    for (const CPoint pixel : pixels) {
        if (!result.status)
            return;
        // The first one is where the tool came down, and is stamped with the one after it.
        if (m_stamped)
            Add(result, m_painting.Move(pixel));
        m_stamped = pixel;
    }
}

CTipPlace CStrokePainter::PlaceOf(const CStrokePoint& point) const {
    return {point.at, m_settings.Width(*m_range, m_width, point.pressure) / 2};
}

} // namespace velmor
