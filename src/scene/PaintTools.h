#pragma once

#include "image/CelImg.h"
#include "image/paint/PaintResult.h"
#include "image/stroke/RoundTip.h"

#include <array>
#include <cstddef>
#include <optional>

namespace velmor {

struct CPaintChoices;

/// The tools of the cel editor; settings hold their numbers.
enum class CelTool {
    Bucket = 0,
    Pen = 1,
    Eraser = 2,
    LineBrush = 3,
    Line = 4,
    Curve = 5,
    Rectangle = 6,
    Ellipse = 7,
    SelectRect = 8,
    Lasso = 9,
    SelectColor = 10,
    AreaFill = 11
};

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

/// In the order of menus and tool bars.
inline constexpr std::array<CPaintTool, 12> paintTools{{
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
    {CelTool::Line,
     "LINE",
     "Line",
     "Strai&ght Line\tV",
     "V",
     "Draws straight lines with the pen; with Shift in steps of 15 degrees, with Ctrl from their middle",
     "Line: draw straight lines",
     "line-tool",
     "",
     "cursor-shape",
     {16, 16},
     false,
     PenForm,
     PenReach,
     DrawPen},
    {CelTool::Curve,
     "CURVE",
     "Curve",
     "Cur&ve\tC",
     "C",
     "Draws curves with the pen: drag from end to end, or click on both, then click where it bends to",
     "Curve: draw curves by their ends and their bend",
     "curve-tool",
     "",
     "cursor-shape",
     {16, 16},
     false,
     PenForm,
     PenReach,
     DrawPen},
    {CelTool::Rectangle,
     "RECTANGLE",
     "Rectangle",
     "&Rectangle\tR",
     "R",
     "Draws rectangles with the pen; with Shift squares, with Ctrl from their centre",
     "Rectangle: draw rectangles of lines",
     "rectangle-tool",
     "",
     "cursor-shape",
     {16, 16},
     false,
     PenForm,
     PenReach,
     DrawPen},
    {CelTool::Ellipse,
     "ELLIPSE",
     "Ellipse",
     "&Ellipse\tJ",
     "J",
     "Draws ellipses with the pen; with Shift circles, with Ctrl from their centre",
     "Ellipse: draw ellipses of lines",
     "ellipse-tool",
     "",
     "cursor-shape",
     {16, 16},
     false,
     PenForm,
     PenReach,
     DrawPen},
    {CelTool::AreaFill,
     "AREAFILL",
     "Area Fill",
     "&Area Fill\tSHIFT+B",
     "Shift+B",
     "Fills every closed area inside of a loop that is drawn round it with the foreground color",
     "Area fill: draw a loop round closed areas to fill them",
     "area-fill",
     "",
     "cursor-bucket",
     {6, 26},
     false,
     OwnForm,
     Anywhere,
     PaintNothing},
    {CelTool::SelectRect,
     "SELECTRECT",
     "Select",
     "&Select Rectangle\tS",
     "S",
     "Selects a rectangle of the drawing, to move, turn and scale it",
     "Select rectangle: drag over a part of the drawing",
     "select-rect",
     "",
     "cursor-select",
     {16, 16},
     true,
     OwnForm,
     Anywhere,
     PaintNothing},
    {CelTool::Lasso,
     "LASSO",
     "Select",
     "&Lasso\tQ",
     "Q",
     "Selects what a line is drawn round, to move, turn and scale it",
     "Lasso: draw round a part of the drawing",
     "lasso",
     "",
     "cursor-select",
     {16, 16},
     true,
     OwnForm,
     Anywhere,
     PaintNothing},
    {CelTool::SelectColor,
     "SELECTCOLOR",
     "Select",
     "Select b&y Color\tW",
     "W",
     "Selects the pixels of the color that is clicked on",
     "Select by color: click on a color",
     "select-color",
     "",
     "cursor-select",
     {16, 16},
     true,
     OwnForm,
     Anywhere,
     PaintNothing},
}};

/// The place of a tool in the table; the first one's for what is no tool, such as a number from old settings.
constexpr std::size_t RowOf(CelTool tool) {
    for (std::size_t row = 0; row < paintTools.size(); ++row)
        if (paintTools[row].id == tool)
            return row;
    return 0;
}
constexpr const CPaintTool& ToolOf(CelTool tool) {
    return paintTools[RowOf(tool)];
}

/// A round tip for strokes that pressure scales.
struct CToolTip {
    TipAction action = TipAction::Ink;
    CColor color;
    double width = 1; ///< in pixels of the image, where pressure leaves it as it is
};

/// The tip of a tool as the choices are; nothing for tools, and forms of tools, that have none.
std::optional<CToolTip> TipOf(CelTool tool, const CPaintChoices& choices);

/// Whether a tool works on what is loaded. With nothing loaded a tool may be chosen for what comes.
bool CanUse(CelTool tool, const CCelImg& image);

} // namespace velmor
