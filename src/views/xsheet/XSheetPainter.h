#pragma once

#include "views/xsheet/XSheetLook.h"

class QPainter;

namespace velmor {

class CXSheetStyle;

/// Paints the xsheet, or a part of it, from what it shows. Knows nothing of the document.
class CXSheetPainter {
public:
    CXSheetPainter(QPainter& painter, const CXSheetLook& look, CXSheetStyle& style)
        : m_painter(painter), m_look(look), m_geometry(look.geometry), m_style(style) {}

    /// At least what lies in `region` of the client area; the painter is clipped to it.
    void Paint(const QRegion& region);

private:
    void PaintBackground(const QRegion& region);
    void PaintCells(const QRegion& region);
    void PaintGrid(const QRegion& visible);
    void PaintCursorFrame(const QRect& rect);
    void PaintCell(const CCellLook& cell, const QRect& rect);
    void PaintFoldedCell(const CCellLook& cell, const QRect& rect);
    void PaintHoldLine(HoldLine line, const QRect& rect, const QColor& color);
    void PaintPicture(const QPixmap& picture, const QRect& room);
    /// What is left of the cell for its text.
    QRect PaintNote(const CNoteLook& note, const QRect& rect);
    void PaintEntry(const CEntryLook& entry);
    void PaintGrip(const CGripLook& grip);
    QColor FillOf(const CCellLook& cell) const;
    void PaintRows(const QRegion& region);
    void PaintFrameNumber(const CFrameLook& frame, int number, const QRect& rect, bool lastOfSecond);
    void PaintCamera(const CFrameLook& frame, const QRect& rect, bool lastOfSecond);
    void PaintSound(const CFrameLook& frame, const QRect& rect, bool lastOfSecond);
    void PaintSpoken(const CFrameLook& frame, const QRect& rect);
    void PaintWave(const std::vector<CPeak>& wave, const QRect& bar, int top);
    void PaintDropMark();
    void PaintHeader(const QRegion& region);
    void PaintFoldedHeader(const CLevelLook& level, int number, const QRect& rect);
    void PaintLevelHeader(const CLevelLook& level, int number, const QRect& rect);
    void PaintCameraHeader();
    void PaintButton(const CHeaderHit& hit, bool on, bool enabled);
    /// A cell's ground with its right and bottom grid line.
    void PaintGround(const QRect& rect, const QColor& fill, bool lastOfSecond);
    /// The bar of what camera input moves, along the header's lower edge.
    void PaintMoveBar(int x, int width, const QColor& color);

    QRect CellRect(std::size_t row, std::size_t column) const {
        return m_geometry.CellRect(
            {m_geometry.firstLevel + static_cast<int>(column), m_geometry.firstFrame + static_cast<int>(row)});
    }
    bool IsLastOfSecond(int frame) const { return m_look.frameRate > 0 && (frame + 1) % m_look.frameRate == 0; }

    QPainter& m_painter;
    const CXSheetLook& m_look;
    const CXSheetGeometry& m_geometry;
    CXSheetStyle& m_style;
};

} // namespace velmor
