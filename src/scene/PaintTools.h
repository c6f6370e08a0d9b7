#pragma once

#include "image/CelImg.h"
#include "image/paint/PaintResult.h"

#include <array>
#include <cstddef>
#include <optional>

namespace velmor {

struct CPaintChoices;

/// The tools of the cel editor; settings hold their numbers.
enum class CelTool { Bucket = 0, Pen = 1, Eraser = 2, LineBrush = 3 };

/// What a tool makes of the way from press to release.
enum class ToolForm {
    Point,     ///< only the release counts
    Stroke,    ///< paints along the way
    Line,      ///< from the press to the release
    Rectangle, ///< between press and release
    Own        ///< what its hand in the cel editor makes of it
};

/// A tool as menus, tool bars, the manual, the cursor and the painting know it: to add one, add its row to
/// `paintTools`, an id to CelTool and to the commands, and what it does.
struct CPaintTool {
    CelTool id;
    const char* name; ///< on its button
    const char* step; ///< what undo calls what it did
    const char* text; ///< with mnemonic and key, as the menu shows it
    const char* key;
    const char* status;
    const char* toolTip;
    const char* icon;
    const char* rectangleIcon; ///< when the tool has that form; empty for tools without it
    const char* cursor;        ///< name of its drawing
    CPoint hotSpot;
    /// Works on pictures, too, which have no lines to draw or to stop a fill.
    bool onPictures;
    /// The choices decide between the forms that a tool has.
    ToolForm (*form)(const CPaintChoices& choices);
    /// How far from its way the tool changes pixels; nothing when it may be anywhere.
    std::optional<int> (*reach)(const CPaintChoices& choices);
    /// A piece of the way of a tool in the form of a stroke, or, with `from` the press and `to` the release, what
    /// the other forms do. Buffer coordinates, which may lie outside the image.
    CPaintResult (*paint)(CCelImg& image, const CPaintChoices& choices, CPoint from, CPoint to);
};

std::optional<int> Anywhere(const CPaintChoices& choices);
std::optional<int> PenReach(const CPaintChoices& choices);
std::optional<int> BrushReach(const CPaintChoices& choices);
ToolForm BucketForm(const CPaintChoices& choices);
ToolForm PenForm(const CPaintChoices& choices);
ToolForm BrushForm(const CPaintChoices& choices);
ToolForm OwnForm(const CPaintChoices& choices);
CPaintResult Pour(CCelImg& image, const CPaintChoices& choices, CPoint press, CPoint release);
CPaintResult DrawPen(CCelImg& image, const CPaintChoices& choices, CPoint from, CPoint to);
CPaintResult Erase(CCelImg& image, const CPaintChoices& choices, CPoint from, CPoint to);
CPaintResult ColorLines(CCelImg& image, const CPaintChoices& choices, CPoint from, CPoint to);
/// Of tools that leave it to their hand.
CPaintResult PaintNothing(CCelImg& image, const CPaintChoices& choices, CPoint from, CPoint to);

/// In the order of CelTool.
inline constexpr std::array<CPaintTool, 4> paintTools{{
    {CelTool::Bucket,
     "BUCKET",
     "Fill",
     "&Bucket\tB",
     "B",
     "Fills areas between lines with the foreground color",
     "Bucket: fill areas",
     "bucket",
     "",
     "cursor-bucket",
     {6, 26},
     false,
     BucketForm,
     Anywhere,
     Pour},
    {CelTool::Pen,
     "PEN",
     "Stroke",
     "Pe&n\tP",
     "P",
     "Draws lines, at which fills stop",
     "Pen: draw lines",
     "pen",
     "",
     "cursor-pen",
     {4, 28},
     false,
     PenForm,
     PenReach,
     DrawPen},
    {CelTool::Eraser,
     "ERASER",
     "Erase",
     "&Eraser\tE",
     "E",
     "Turns lines into background color",
     "Eraser: turn lines into background color",
     "eraser",
     "eraser-rect",
     "cursor-eraser",
     {6, 26},
     true,
     BrushForm,
     BrushReach,
     Erase},
    {CelTool::LineBrush,
     "LINEBRUSH",
     "Line Brush",
     "&Line Brush\tL",
     "L",
     "Colors lines with the foreground color",
     "Line brush: color lines",
     "line-brush",
     "line-brush-rect",
     "cursor-line-brush",
     {4, 28},
     true,
     BrushForm,
     BrushReach,
     ColorLines},
}};

constexpr const CPaintTool& ToolOf(CelTool tool) {
    return paintTools[static_cast<std::size_t>(tool)];
}

/// Whether a tool works on what is loaded. With nothing loaded a tool may be chosen for what comes.
bool CanUse(CelTool tool, const CCelImg& image);

} // namespace velmor
