#pragma once

#include "image/Geometry.h"
#include "image/render/Render.h"

namespace velmor {

/// A point of an image in pixels; pixel (x, y) covers [x, x + 1) x [y, y + 1).
struct CSourcePoint {
    double x = 0;
    double y = 0;
};

/// Columns begin to end - 1 of a row.
struct CColumnSpan {
    int begin = 0;
    int end = 0;

    bool IsEmpty() const { return end <= begin; }
};

/// Where each pixel of a frame lies in an image that is placed on it.
///
/// PointOf() is the formula that decides; its order of operations is part of the file format's promise that a scene
/// looks the same everywhere. Along a row it is, operation by operation, a monotone function of the column, so that
/// the columns whose point is inside the image are one span. Where IsEstimable(), the straight line
/// PointOf(0, row) + column * (stepX, stepY) stays within estimateError of it.
class CSourceMapping {
public:
    /// Bound for the line's error. Both the formula and the line (also in fixed point with fractionBits) take fewer
    /// than 16 roundings of values below 2^20, which is less than 2^-28; the step in fixed point adds 2^-41 a
    /// column.
    static constexpr double estimateError = 0x1p-25;
    static constexpr int fractionBits = 42;
    static constexpr double fixedOne = 0x1p42;

    CSourceMapping(const CPlacement& placement, CSize image, CSize destination);

    CSourcePoint PointOf(int column, int row) const {
        double x = column - m_centreX;
        double y = row - m_centreY;
        if (m_isRotated) {
            const double rotatedX = x * m_cosine - y * m_sine;
            y = x * m_sine + y * m_cosine;
            x = rotatedX;
        }
        return {x / m_scaleX + m_halfWidth, y / m_scaleY + m_halfHeight};
    }
    /// The columns whose point has area.x <= x < area.endX and area.y <= y < area.endY. What is not a number is
    /// outside.
    CColumnSpan ColumnsInside(int row, const CRect& area) const;

    bool IsRotated() const { return m_isRotated; }
    bool IsEstimable() const { return m_isEstimable; }
    double StepX() const { return m_stepX; }
    double StepY() const { return m_stepY; }

    double CentreX() const { return m_centreX; }
    double CentreY() const { return m_centreY; }
    double Cosine() const { return m_cosine; }
    double Sine() const { return m_sine; }
    double ScaleX() const { return m_scaleX; }
    double ScaleY() const { return m_scaleY; }
    double HalfWidth() const { return m_halfWidth; }
    double HalfHeight() const { return m_halfHeight; }

private:
    double m_centreX;
    double m_centreY;
    double m_cosine = 1;
    double m_sine = 0;
    double m_scaleX;
    double m_scaleY;
    double m_halfWidth;
    double m_halfHeight;
    bool m_isRotated;
    bool m_isEstimable = false;
    int m_columns;
    double m_stepX = 0;
    double m_stepY = 0;
};

} // namespace velmor
