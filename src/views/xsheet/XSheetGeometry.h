#pragma once

#include "xsheet/SheetCell.h"
#include "xsheet/XSheet.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <bitset>
#include <optional>

namespace velmor {

enum class HeaderButton { Blur, Transparency, Move, Camera };

/// A button of the header; `level` is 0 for the camera's.
struct CHeaderHit {
    HeaderButton button = HeaderButton::Camera;
    int level = 0;

    bool operator==(const CHeaderHit&) const = default;
};

/// Where things stand on the client area of the xsheet, in its logical pixels, and what is hit there. From left to
/// right: the frame numbers, the level columns, and at the right edge the camera column, which does not scroll. On
/// top the header, which does not scroll either: a row of buttons and a row of names.
struct CXSheetGeometry {
    static constexpr int frameColumnWidth = 30;
    static constexpr int headerHeight = 40;
    static constexpr int buttonSize = 20;  ///< also the height of either header row
    static constexpr int foldedWidth = 18; ///< of a level that is folded
    static constexpr int textHeight = 20;  ///< of the line of text in a cell that has a picture below it
    static constexpr int cameraColumnWidth = 140;
    static constexpr int soundWidth = 60; ///< the right part of the camera column

    QSize client;
    int levelCount = 0; ///< both 0 without a scene
    int frameCount = 0;
    int firstLevel = 0; ///< the scroll positions
    int firstFrame = 0;
    // How large cells are shown.
    int levelWidth = 80;
    int rowHeight = 20;
    std::bitset<CXSheet::mostLevelsInFile> folded; ///< levels that are no more than a strip

    bool IsFolded(int level) const {
        return level >= 0 && level < CXSheet::mostLevelsInFile && folded[static_cast<std::size_t>(level)];
    }
    int WidthOf(int level) const { return IsFolded(level) ? foldedWidth : levelWidth; }

    // Whole columns and rows on the client area.
    int VisibleLevels() const;
    int VisibleFrames() const;
    // The scroll positions' maxima. Once the frames scroll, one empty row may be scrolled in below the last.
    int MostFirstLevel() const;
    int MostFirstFrame() const;
    void ClampScroll();
    /// The same sheet scrolled as little as brings a cell wholly into view.
    CXSheetGeometry Showing(CSheetCell cell) const;

    // The nearest level and frame of a point that may lie anywhere. Divisions cut towards zero, so that the header
    // row of names belongs to the first visible frame.
    int XToLevel(int x) const;
    int YToFrame(int y) const;
    CSheetCell NearestCell(QPoint point) const { return {XToLevel(point.x()), YToFrame(point.y())}; }
    /// Where cels dropped at a point land; nothing when that is outside the sheet.
    std::optional<CSheetCell> DropTarget(QPoint point) const;
    /// The same for sounds, for which any column will do.
    std::optional<int> DropFrame(int y) const;

    /// The button under a column of the button row; the first pixel column of the levels belongs to none.
    std::optional<CHeaderHit> HeaderButtonAt(int x) const;
    /// The level whose column is under a point of grid or header.
    std::optional<int> LevelAt(QPoint point) const;
    /// The cell that is seen at a point of the grid.
    std::optional<CSheetCell> CellAt(QPoint point) const;
    /// The frame of a point of the camera column below its header, the part for sounds excepted.
    std::optional<int> CameraFrameAt(QPoint point) const;

    /// The frame of a point of the sound column below its header.
    std::optional<int> SoundFrameAt(QPoint point) const;

    QRect GridArea() const;
    QRect CameraColumn() const; ///< header included
    int ColumnX(int level) const;
    int RowY(int frame) const { return headerHeight + rowHeight * (frame - firstFrame); }
    QRect CellRect(CSheetCell cell) const {
        return {ColumnX(cell.level), RowY(cell.frame), WidthOf(cell.level), rowHeight};
    }
    /// Where the picture of a cell goes, below its text; empty in low rows.
    static QRect PictureRect(const QRect& cell) { return cell.adjusted(4, textHeight, -4, -4); }
    QRect LevelHeaderRect(int level) const { return {ColumnX(level), 0, WidthOf(level), headerHeight}; }
    QRect ButtonRect(const CHeaderHit& hit) const;
    QRect FrameNumberRect(int frame) const { return {0, RowY(frame), frameColumnWidth, rowHeight}; }
    QRect CameraRect(int frame) const;
    QRect SoundRect(int frame) const;
    /// One past the last level or frame of which a part is seen.
    int EndLevel() const;
    int EndFrame() const;

    /// How far a selection that is dragged to a point scrolls: levels in x, frames in y.
    QPoint SelectionScroll(QPoint point) const;
    /// The same for assets that are held near an edge of the grid before they are dropped.
    QPoint DropScroll(QPoint point) const;

    bool operator==(const CXSheetGeometry&) const = default;

private:
    int LevelsRoom() const { return client.width() - frameColumnWidth - cameraColumnWidth; }
    /// The level of a column, which need not be there.
    int LevelAtX(int x) const;
};

} // namespace velmor
