#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/CleanupOperations.h"
#include "scene/CommandState.h"
#include "scene/PaletteOperations.h"

namespace velmor::commands {

namespace {

template<CelPick Kind>
bool IsPicking(const Target& target) {
    return target.cel.PendingPick() == Kind;
}
// Chosen once more, a pick is called off.
template<CelPick Kind, void (CCelView::*Start)()>
void TogglePick(Target& target) {
    if (IsPicking<Kind>(target))
        target.cel.CancelPick();
    else
        (target.cel.*Start)();
}

constexpr CCommand rows[] = {
    {CommandId::CelDespeckle, "&Despeckle", "despeckle", "",
     "Takes specks off the cel, of the size that was last chosen for cleaning up", "Despeckle", When<HasEditedCel>,
     nullptr, Do<&CVelmorltDoc::Cleanups, &CCleanupOperations::DespeckleEdited>, celEditor},
    {CommandId::CelThicken, "Thic&ken Lines", "thicken-lines", "",
     "Makes the lines of the cel thicker by a pixel on either side", "Thicken Lines", When<HasEditedCel>, nullptr,
     Do<&CVelmorltDoc::Cleanups, &CCleanupOperations::ThickenEdited>, celEditor},
    {CommandId::CelThin, "Thi&n Lines", "thin-lines", "",
     "Makes the lines of the cel thinner by a pixel on either side, down to one pixel", "Thin Lines",
     When<HasEditedCel>, nullptr, Do<&CVelmorltDoc::Cleanups, &CCleanupOperations::ThinEdited>, celEditor},
    ToolCommand<CommandId::CelBucket, CelTool::Bucket>(),
    ToolCommand<CommandId::CelPen, CelTool::Pen>(),
    ToolCommand<CommandId::CelEraser, CelTool::Eraser>(),
    ToolCommand<CommandId::CelLineBrush, CelTool::LineBrush>(),
    ToolCommand<CommandId::CelAreaFill, CelTool::AreaFill>(),
    {CommandId::CelFillSettings, "&Fill Settings...", "fill-settings", "",
     "Sets up to which size fills close gaps, whose lines stop them, and what a dragged bucket does",
     "Fill Settings", Always, nullptr, Do<&CVelmorltDoc::Palette, &CPaletteOperations::EditFillSettings>},
    {CommandId::CelShowGaps, "Show &Gaps\tG", "show-gaps", "G",
     "Marks the gaps between lines that fills close as they are set", "Show the gaps that fills close",
     When<HasEditedImage>, [](const Target& target) { return target.cel.ShowsGaps(); }, Cel<&CCelView::ToggleGaps>,
     celEditor, Focused},
    {CommandId::CelPickColor, "Pi&ck Color\tI", "pick-color", "I",
     "Makes the color under the next click the foreground color", "Pick the foreground color from the image",
     When<HasEditedImage>, IsPicking<CelPick::Foreground>, TogglePick<CelPick::Foreground, &CCelView::Pick>,
     celEditor, Focused},
    {CommandId::CelSwapColors, "&Swap Colors\tX", "swap-colors", "X",
     "Lets the foreground and the background color change places", "Swap foreground and background color", Always,
     nullptr, Do<&CVelmorltDoc::Palette, &CPaletteOperations::SwapColors>, celEditor, Focused},
    {CommandId::CelPickAnywhere, "Pick from &Window\tSHIFT+I", "pick-window", "Shift+I",
     "Makes the color under the next click anywhere in the program's windows the foreground color",
     "Pick the foreground color anywhere in the window", HasScene,
     [](const Target& target) { return target.cel.IsPickingFromWindow(); }, Cel<&CCelView::PickFromWindow>,
     celEditor, Focused},
    {CommandId::CelImportPalette, "&Import Palette...", "import-palette", "",
     "Adds the colors of a GIMP palette file to the palette of the folder", "Import Palette", HasFolder, nullptr,
     Do<&CVelmorltDoc::Palette, &CPaletteOperations::AskAndImportPalette>},
    {CommandId::CelExportPalette, "&Export Palette...", "export-palette", "",
     "Writes the palette of the folder to a GIMP palette file", "Export Palette", HasFolder, nullptr,
     Do<&CVelmorltDoc::Palette, &CPaletteOperations::AskAndExportPalette>},
    {CommandId::CelColorKey, "Color &Key\tK", "color-key", "K",
     "Makes the color under the next click transparent in the picture",
     "Make a color picked from the picture transparent", When<HasEditedPicture>, IsPicking<CelPick::ColorKey>,
     TogglePick<CelPick::ColorKey, &CCelView::ColorKey>, celEditor, Focused},
    ToolCommand<CommandId::CelLine, CelTool::Line>(),
    ToolCommand<CommandId::CelCurve, CelTool::Curve>(),
    ToolCommand<CommandId::CelRectangle, CelTool::Rectangle>(),
    ToolCommand<CommandId::CelEllipse, CelTool::Ellipse>(),
    {CommandId::CelPressure, "&Pen Pressure\tShift+P", "pen-pressure", "Shift+P",
     "Lets the pressure of a tablet's pen scale pens and brushes, or lets it no longer",
     "Pen pressure scales pens and brushes", Always,
     [](const Target& target) { return target.cel.PenSettings().HasPressure(); }, Cel<&CCelView::TogglePressure>,
     celEditor, Focused},
    {CommandId::CelStabilizer, "&Stabilizer\tShift+S", "stabilizer", "Shift+S",
     "Keeps strokes from following every tremor of the hand, or no longer", "Stabilizer: steady strokes", Always,
     [](const Target& target) { return target.cel.PenSettings().stabilizer != StabilizerKind::None; },
     Cel<&CCelView::ToggleStabilizer>, celEditor, Focused},
    {CommandId::CelPenSettings, "Pen Se&ttings...", "pen-settings", "",
     "Sets what the pressure of the pen does, and the stabilizer", "Pen Settings", Always, nullptr,
     Cel<&CCelView::EditPenSettings>},
};

} // namespace

std::span<const CCommand> CelPaintCommands() {
    return rows;
}

} // namespace velmor::commands
