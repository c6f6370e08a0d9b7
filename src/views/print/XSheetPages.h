#pragma once

#include <string>

namespace velmor {

/// Lengths on a printed page are tenths of a point, so that fonts, whose sizes are whole, come out as they are
/// meant.
inline constexpr double pagePoint = 10;

/// What one printed page shows; both ranges are inclusive. A sheet without levels has lastLevel -1.
struct CXSheetPage {
    int number = 1; ///< of the first page
    int firstLevel = 0;
    int lastLevel = -1;
    int firstFrame = 0;
    int lastFrame = 0;

    int Levels() const { return lastLevel - firstLevel + 1; }
    int Frames() const { return lastFrame - firstFrame + 1; }
    bool operator==(const CXSheetPage&) const = default;
};

/// A column of a printed page.
struct CPageColumn {
    double left = 0;
    double width = 0;

    double Right() const { return left + width; }
};

/// What is printed, as far as the pages' division depends on it.
struct CXSheetExtent {
    int levels = 1;
    int frames = 1;
    int framesPerSecond = 25;
    double levelWidth = 0; ///< the width at which a level's widest cell is read at ease
};

/// Divides an xsheet into pages and places the parts of a page: head, columns, rows, foot. A page holds whole
/// seconds, or half ones, when that many rows fit. Pages follow each other across the levels first, then down.
class CXSheetPages {
public:
    /// `width` and `height` are those of the printable area; where it is too small for a legible page the page is
    /// laid out larger and shrunk by Scale().
    CXSheetPages(double width, double height, const CXSheetExtent& extent);

    int Count() const { return m_across * m_down; }
    /// `index` 0 to Count() - 1.
    CXSheetPage At(int index) const;

    double Scale() const { return m_scale; }
    /// The page as it is laid out, before the scale.
    double Width() const { return m_width; }
    double Height() const { return m_height; }

    double GridTop() const { return m_gridTop; }
    double RowHeight() const { return m_rowHeight; }
    /// The top of a row, counted from the page's first; also the bottom of the row before.
    double RowTop(int row) const { return m_gridTop + row * m_rowHeight; }
    double HeaderTop() const;
    double FootTop() const;

    CPageColumn LeftFrames() const;
    /// The columns that every page has for levels; those of the last one may be empty.
    int LevelsPerPage() const { return m_levelsPerPage; }
    /// A level's column, counted from the page's first.
    CPageColumn Level(int column) const { return {m_levelsLeft + column * m_levelWidth, m_levelWidth}; }
    CPageColumn Sound() const;
    CPageColumn Pan() const;
    CPageColumn Zoom() const;
    CPageColumn Rotation() const;
    CPageColumn RightFrames() const;
    /// What is left at the right for notes by hand; no width where it would be too narrow to write in.
    CPageColumn Notes() const;

private:
    void DivideLevels();
    void DivideFrames();

    CXSheetExtent m_extent;
    double m_scale = 1;
    double m_width;
    double m_height;
    double m_gridTop = 0;
    double m_rowHeight = 0;
    double m_levelsLeft = 0;
    double m_levelWidth = 0;
    int m_across = 1;
    int m_down = 1;
    int m_levelsPerPage = 1;
    int m_framesPerPage = 1;
};

/// How strong the rule above a frame is.
enum class FrameRule { Plain, HalfSecond, Second };
FrameRule RuleAbove(int frame, int framesPerSecond);

/// "levels 1-12 of 14, frames 1-50 of 100": where a page stands in the sheet, counted from 1.
std::string PageCoordinates(const CXSheetPage& page, int levels, int frames);

} // namespace velmor
