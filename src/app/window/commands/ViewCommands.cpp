#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "views/source/SourceView.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

namespace velmor::commands {

namespace {

template<bool Camera, bool Xsheet, bool CelEditor>
bool ShowsOnly(const Target& target) {
    return target.frame.Panes().IsArrangement(Camera, Xsheet, CelEditor);
}

constexpr CCommand rows[] = {
    {CommandId::ViewCameraAndXsheet,
     "Ca&m && Xsheet\tF1",
     "view-camera-xsheet",
     "F1",
     "Shows both camera and xsheet views in a shared space",
     "View Camera and Xsheet",
     Always,
     ShowsOnly<true, true, false>,
     Frame<&CMainFrame::ShowCameraAndXSheet>,
     {},
     Everywhere,
     Arrangements},
    {CommandId::ViewCamera,
     "&Camera\tF2",
     "view-camera",
     "F2",
     "Maximized the camera view",
     "View Camera",
     Always,
     ShowsOnly<true, false, false>,
     Frame<&CMainFrame::ShowCamera>,
     {},
     Everywhere,
     Arrangements},
    {CommandId::ViewXsheet,
     "&XSheet\tF3",
     "view-xsheet",
     "F3",
     "Maximized the xsheet view",
     "View Xsheet",
     Always,
     ShowsOnly<false, true, false>,
     Frame<&CMainFrame::ShowXSheet>,
     {},
     Everywhere,
     Arrangements},
    {CommandId::ViewCelEditor,
     "&Cel Editor\tF4",
     "view-cel-editor",
     "F4",
     "Maximized the cel editor",
     "View Cel Editor",
     Always,
     ShowsOnly<false, false, true>,
     Frame<&CMainFrame::ShowCelEditor>,
     {},
     Everywhere,
     Arrangements},
    {CommandId::ViewToolBar, "&Toolbar", "", "", "Show or hide the toolbar", "Toggle ToolBar", Always,
     [](const Target& target) { return target.frame.IsToolBarShown(); }, Frame<&CMainFrame::ToggleToolBar>},
    {CommandId::ViewStatusBar, "&Status Bar", "", "", "Show or hide the status bar", "Toggle StatusBar", Always,
     [](const Target& target) { return target.frame.IsStatusBarShown(); }, Frame<&CMainFrame::ToggleStatusBar>},
    {CommandId::ViewCameraTools, "Camera T&ools", "", "", "Show or hide the tools of the camera view", "", Always,
     HasBar<PaneBar::CameraTools>, ToggleBar<PaneBar::CameraTools>, camera},
    {CommandId::ViewXsheetTools, "XSheet Too&ls", "", "", "Show or hide the tools of the xsheet", "", Always,
     HasBar<PaneBar::XsheetTools>, ToggleBar<PaneBar::XsheetTools>, sheet},
    {CommandId::ViewCelTools, "Cel &Editor Tools", "", "", "Show or hide the tools of the cel editor", "", Always,
     HasBar<PaneBar::CelTools>, ToggleBar<PaneBar::CelTools>, celEditor},
    {CommandId::ViewColors, "Colo&rs", "", "", "Show or hide the colors of the cel editor", "", Always,
     HasBar<PaneBar::Colors>, ToggleBar<PaneBar::Colors>, celEditor},
    {CommandId::ViewBrushes, "&Brushes", "", "", "Show or hide the brushes of the cel editor", "", Always,
     HasBar<PaneBar::Brushes>, ToggleBar<PaneBar::Brushes>, celEditor},
    {CommandId::ViewAssetThumbnails, "Asset T&humbnails", "", "",
     "Show or hide what is drawn on cels and pictures in the asset list", "Toggle Asset Thumbnails", Always,
     [](const Target& target) { return target.frame.SourceView().ShowsThumbnails(); },
     Frame<&CMainFrame::ToggleAssetThumbnails>},
    {CommandId::ViewSoundWaves, "Sound &Waves", "", "",
     "Show or hide the waves of the sounds beside the frames of the xsheet", "Toggle Sound Waves", Always,
     [](const Target& target) { return target.frame.XsheetPane().View().ShowsSoundWaves(); },
     Frame<&CMainFrame::ToggleSoundWaves>, sheet},
    {CommandId::ViewAppearance, "&Appearance...", "", "", "Chooses light or dark colours for the window",
     "Appearance", Always, nullptr, Frame<&CMainFrame::ChooseAppearance>},
};

} // namespace

std::span<const CCommand> ViewCommands() {
    return rows;
}

} // namespace velmor::commands
