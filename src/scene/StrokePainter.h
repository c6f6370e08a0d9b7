#pragma once

#include "image/stroke/PixelWay.h"
#include "image/stroke/SmoothWay.h"
#include "image/stroke/Stabilizer.h"
#include "scene/CelPainting.h"
#include "scene/PenSettings.h"

#include <optional>
#include <span>

namespace velmor {

/// Where the tools' stamps stand for a point of the image: in the pixel above the one that it is in. Strokes, lines
/// and shapes that are drawn with stamps meet where they are begun and ended at the same point.
CPoint StampPixel(CRealPoint point);

/// A stroke that is more than the tool's stamps from position to position: wide or thin by pressure, stabilized, or
/// both. It is a curve through the positions. Points are those of the image; without pressure the tool's own stamps
/// stand where StampPixel() has them.
class CStrokePainter {
public:
    /// `painting` outlives the object.
    explicit CStrokePainter(CCelPainting& painting) : m_painting(painting) {}

    /// Whether the settings want a stroke of a tool to be one of these. `isPressed` tells whether there is a
    /// pressure to be gone by; a mouse has none.
    static bool IsWanted(const CPenSettings& settings, CelTool tool, bool isPressed);

    /// The pen comes down. The stabilizer's length is given in `pixel`s, the size of one of the screen in those of
    /// the image. False when the tool cannot work there.
    [[nodiscard]] bool Press(CelTool tool, const CPenSettings& settings, bool isPressed, const CStrokePoint& at,
                             double pixel);
    CPaintResult Move(std::span<const CStrokePoint> way);
    /// Instead of moving and releasing: straight to a point, everywhere as wide as a pressure makes it.
    CPaintResult ReleaseStraight(CRealPoint to, double pressure);
    /// Up to the point where it is lifted, with the pressure that it had before.
    CPaintResult Release(CRealPoint at);
    /// What has been painted stays.
    void Cancel() { m_painting.Cancel(); }

private:
    void Begin(CPaintResult& result);
    /// Adds what painting along the points does to a result, until something fails.
    void Paint(const std::vector<CStrokePoint>& line, CPaintResult& result);
    void Stamp(const std::vector<CPoint>& pixels, CPaintResult& result);
    CTipPlace PlaceOf(const CStrokePoint& point) const;

    CCelPainting& m_painting;
    CPenSettings m_settings;
    std::optional<CStrokePoint> m_press;     ///< until something is painted
    const CPressureRange* m_range = nullptr; ///< null without pressure
    double m_width = 1;
    double m_pressure = 0; ///< the last one
    CStabilizer m_stabilizer{StabilizerKind::None, 0};
    CSmoothWay m_curve;
    CPixelWay m_pixels;
    std::optional<CPoint> m_stamped; ///< the last pixel
};

} // namespace velmor
