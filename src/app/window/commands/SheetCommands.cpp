#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/AssetOperations.h"
#include "scene/CameraOperations.h"
#include "scene/CellOperations.h"
#include "scene/CommandState.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"

namespace velmor::commands {

namespace {

constexpr CCommand rows[] = {
    {CommandId::XsheetAddLevel, "&Add Level\tINS", "add-level", "Ins", "Adds another level to the xsheet",
     "Add Level", HasScene, nullptr, Do<&CVelmorltDoc::XSheet, &CXSheetOperations::AddLevel>, sheet, Focused},
    {CommandId::XsheetDeleteLevel, "&Delete Level", "delete-level", "",
     "Delete one level from the current xsheet of the scene", "Delete Level", When<CanDeleteLevel>, nullptr,
     Do<&CVelmorltDoc::XSheet, &CXSheetOperations::DeleteLevel>, sheet},
    {CommandId::XsheetRenameLevel, "&Rename Level", "rename-level", "", "Renames a level", "Rename Level", HasScene,
     nullptr, Do<&CVelmorltDoc::XSheet, &CXSheetOperations::RenameLevel>, sheet},
    {CommandId::XsheetSwapLevels, "&Swap Levels", "swap-levels", "", "Swaps two given layers", "Swap levels",
     When<CanSwapLevels>, nullptr, Do<&CVelmorltDoc::XSheet, &CXSheetOperations::SwapLevels>, sheet},
    {CommandId::XsheetAddFrames, "Add &Frames", "add-frames", "", "Adds frames to the xsheet", "Add Frames",
     HasScene, nullptr, Do<&CVelmorltDoc::XSheet, &CXSheetOperations::AddFrames>, sheet},
    {CommandId::XsheetDeleteFrames, "&Delete Frames", "delete-frames", "",
     "Deletes frames from the end of the xsheet", "Delete Frames", HasScene, nullptr,
     Do<&CVelmorltDoc::XSheet, &CXSheetOperations::DeleteFrames>, sheet},
    {CommandId::XsheetEditCelData, "Edit &Cel Data\tDBL CLK", "edit-cel-data", "",
     "Edits the current position/scale/rotate and fx of the current cel in Xsheet", "Edit Transformations",
     When<CanEditCellData>, nullptr, Do<&CVelmorltDoc::Cells, &CCellOperations::EditCellData>, sheet},
    {CommandId::XsheetEditCameraData, "Edit Ca&mera Data\tDBL CLK", "edit-camera-data", "",
     "Edits the current camera data on the current camera cel", "Edit Cam Data", HasScene, nullptr,
     Do<&CVelmorltDoc::Camera, &CCameraOperations::EditCameraData>, sheet},
    {CommandId::XsheetInbetweenLevel, "&Inbetween Level Data\tF9", "inbetween-level", "F9",
     "Shows Inbetween dialog with the current level and selected frames", "Inbetween Level", When<CanInbetween>,
     nullptr, Do<&CVelmorltDoc::Cells, &CCellOperations::Inbetween>, sheet, Shown},
    {CommandId::XsheetInbetweenCamera, "In&between Camera Data\tF10", "inbetween-camera", "F10",
     "Shows Inbetween dialog for camera with selected frames", "Inbetween Camera", When<CanInbetween>, nullptr,
     Do<&CVelmorltDoc::Camera, &CCameraOperations::Inbetween>, sheet, Shown},
    {CommandId::XsheetMultipleLevels, "Multiple &Level Move Selections", "multiple-levels", "",
     "Sets either single or multiple level movement selections", "Multiple Level Move Selections", Always,
     [](const Target& target) { return target.doc.Model().moveSelection.IsMultiple(); },
     Do<&CVelmorltDoc::Cursor, &CXSheetCursor::ToggleMultipleMoveSelection>, sheet},
    {CommandId::XsheetOpenDrawing, "&Open Drawing\tENTER", "edit-asset", "Return; Enter",
     "Opens the drawing of the current cel in the cel editor", "Open Drawing", When<CanEditCellData>, nullptr,
     [](Target& target) { target.doc.Assets().EditDrawing(target.doc.Model().CursorCell()); }, sheet, Focused},
    {CommandId::XsheetBlur, "Bl&ur", "header-blur", "", "Edits the blur of the current cel", "Blur",
     When<CanEditCellData>, nullptr,
     [](Target& target) { target.doc.Cells().OnXSheetDoBlur(target.doc.Model().cursorLevel); }, sheet},
    {CommandId::XsheetTransparency, "&Transparency", "header-transparency", "",
     "Edits the transparency of the current cel", "Transparency", When<CanEditCellData>, nullptr,
     [](Target& target) { target.doc.Cells().OnXSheetDoTrans(target.doc.Model().cursorLevel); }, sheet},
};

} // namespace

std::span<const CCommand> SheetCommands() {
    return rows;
}

} // namespace velmor::commands
