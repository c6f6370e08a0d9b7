#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/sheet/SheetDisplay.h"
#include "views/xsheet/XsheetFrame.h"

namespace velmor::commands {

namespace {

template<int By>
bool CanZoomSheet(const Target& target) {
    const int zoom = target.doc.SheetDisplay().Zoom() + By;
    return zoom >= 0 && zoom <= CSheetDisplay::mostZoom;
}
template<int By>
void ZoomSheet(Target& target) {
    target.doc.SheetDisplay().SetZoom(target.doc.SheetDisplay().Zoom() + By);
}

constexpr CCommand rows[] = {
    {CommandId::SheetZoomIn, "Zoom &In", "zoom-in", "",
     "Makes the cells of the xsheet larger, with pictures in them", "Zoom In on the XSheet", CanZoomSheet<1>,
     nullptr, ZoomSheet<1>, sheet},
    {CommandId::SheetZoomOut, "Zoom &Out", "zoom-out", "", "Makes the cells of the xsheet smaller",
     "Zoom Out of the XSheet", CanZoomSheet<-1>, nullptr, ZoomSheet<-1>, sheet},
    {CommandId::SheetFolderColors, "&Colors by Folder", "", "", "Gives cells the color of their folder",
     "Colors by Folder", Always, [](const Target& target) { return target.doc.SheetDisplay().ColorsFolders(); },
     [](Target& target) { target.doc.SheetDisplay().ColorFolders(!target.doc.SheetDisplay().ColorsFolders()); },
     sheet},
    {CommandId::SheetHoldLines, "&Holds as Lines", "", "", "Draws held cels as lines in place of ditto marks",
     "Holds as Lines", Always, [](const Target& target) { return target.doc.SheetDisplay().DrawsHolds(); },
     [](Target& target) { target.doc.SheetDisplay().DrawHolds(!target.doc.SheetDisplay().DrawsHolds()); }, sheet},
    {CommandId::SheetOtherScene, "Other &Scene Beside", "", "",
     "Shows the xsheet of another scene beside the xsheet, to copy cels from", "Other Scene", Always,
     [](const Target& target) { return target.frame.XsheetPane().ShowsOtherSheet(); },
     [](Target& target) { target.frame.XsheetPane().ToggleOtherSheet(); }, sheet},
};

} // namespace

std::span<const CCommand> SheetViewCommands() {
    return rows;
}

} // namespace velmor::commands
