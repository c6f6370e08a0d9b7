#include "app/window/MenuTable.h"

namespace velmor {

namespace {

using enum CommandId;

constexpr CommandId fileMenu[] = {
    FileNewScene, FileOpenScene, FileSceneManager, Separator,        FileSceneSettings, FileSaveAll,
    Separator,    FileSettings,  Separator,        FilePrint,        FilePrintPreview,  FilePrintSetup,
    Separator,    FileExit,      Separator,        FileImportXsheet, FileExportXsheet,  FilePrintDialogue};
constexpr CommandId editMenu[] = {EditUndo,        Separator,    EditCut,    EditCopy,    EditPaste,
                                  Separator,       EditCondense, EditExpand, EditReverse, Separator,
                                  EditRemoveSound, Separator,    EditRedo,   EditHistory};
constexpr CommandId assetsMenu[] = {
    AssetsNewFolder, AssetsNewCel,    Separator,    AssetsDelete,    AssetsDeleteFolder, Separator,
    AssetsEdit,      AssetsPlaySound, AssetsRename, AssetsDuplicate, Separator,          AssetsRotate,
    AssetsFlip,      AssetsColorKey,  Separator,    AssetsPin,       Separator,          AssetsCleanUp};
constexpr CommandId cameraMenu[] = {CameraMoveMode, CameraRotateMode, CameraZoomMode,        Separator,
                                    CameraZoomIn,   CameraZoomOut,    CameraZoomOneToOne,    CameraPan,
                                    Separator,      CameraAntialias,  CameraMotionPathSetup, Separator,
                                    CameraFit,      Separator,        CameraOnionSkin};
constexpr CommandId guidesMenu[] = {CameraFields12,  CameraFields16,  CameraFieldsOnStage, Separator,
                                    CameraFrameWide, CameraFrameTall, Separator,           CameraActionSafe,
                                    CameraTitleSafe, Separator,       CameraPrintGuides};
constexpr CommandId cameraHandMenu[] = {CameraHandles, CameraSpacing, CameraDrawPath, Separator, CameraOneToOne};
constexpr CMenu cameraSubmenus[] = {{"By &Hand", cameraHandMenu}, {"&Guides", guidesMenu}};
constexpr CommandId xsheetMenu[] = {XsheetAddLevel,
                                    XsheetDeleteLevel,
                                    XsheetRenameLevel,
                                    XsheetSwapLevels,
                                    Separator,
                                    XsheetAddFrames,
                                    XsheetDeleteFrames,
                                    Separator,
                                    XsheetEditCelData,
                                    XsheetEditCameraData,
                                    Separator,
                                    XsheetInbetweenLevel,
                                    XsheetInbetweenCamera,
                                    Separator,
                                    XsheetMultipleLevels,
                                    Separator,
                                    XsheetOpenDrawing,
                                    XsheetBlur,
                                    XsheetTransparency};
constexpr CommandId exposureMenu[] = {
    ExposureNewDrawing, Separator,     ExposureOnes,       ExposureTwos,       ExposureThrees, ExposureFours,
    Separator,          ExposureSwing, ExposureRandom,     Separator,          ExposureShift,  ExposureRoll,
    ExposureStretch,    Separator,     ExposureInsertTime, ExposureDeleteTime, Separator,      ExposurePush};
// What the status bar says of typed drawings, to be chosen there.
constexpr CommandId typedExposureMenu[] = {CelNewOnOnes, CelNewOnTwos, CelNewOnThrees, Separator, ExposurePush};
constexpr CMenu typedExposures{"Typed Exposures", typedExposureMenu};
constexpr CommandId noteMenu[] = {NoteKey,    NoteBreakdown, NoteInbetween, NoteStopHold, Separator,  NoteRed,
                                  NoteOrange, NoteYellow,    NoteGreen,     NoteBlue,     NoteViolet, Separator,
                                  NoteCell,   NoteFrame,     NoteClear,     Separator,    NoteNext,   NotePrevious,
                                  NoteList,   Separator,     NoteEndHold};
constexpr CommandId levelsMenu[] = {LevelMoveLeft, LevelMoveRight, Separator, LevelFold, LevelUnfoldAll};
constexpr CommandId xsheetSoundMenu[] = {XsheetSoundEarlier, XsheetSoundLater,     XsheetSoundShape, Separator,
                                         XsheetDialogue,     XsheetImportDialogue, Separator,        XsheetMouths};
constexpr CMenu xsheetSubmenus[] = {{"E&xposure", exposureMenu},
                                    {"Le&vels", levelsMenu},
                                    {"Sou&nd and Dialogue", xsheetSoundMenu},
                                    {"Mar&ks and Notes", noteMenu}};
constexpr CMenu cellSubmenus[] = {{"E&xposure", exposureMenu}, {"Mar&ks and Notes", noteMenu}};
constexpr CMenu levelSubmenus[] = {{"Le&vels", levelsMenu}};
constexpr CommandId celMenu[] = {CelZoomIn,       CelZoomOut,   CelZoomOneToOne, CelPan,    Separator,
                                 CelUpdateCamera, Separator,    CelSettings,     Separator, CelFit,
                                 Separator,       CelBucket,    CelPen,          CelEraser, CelLineBrush,
                                 Separator,       CelPickColor, CelColorKey,     Separator, CelReplaceColor};
constexpr CommandId celSelectionMenu[] = {CelSelectRect,
                                          CelLasso,
                                          CelSelectColor,
                                          Separator,
                                          CelSelectAll,
                                          CelSelectNone,
                                          CelSelectInverse,
                                          Separator,
                                          CelCut,
                                          CelCopy,
                                          CelPaste,
                                          CelDelete,
                                          Separator,
                                          CelMirrorHorizontally,
                                          CelMirrorVertically,
                                          CelQuarterLeft,
                                          CelQuarterRight,
                                          Separator,
                                          CelSelectLines,
                                          CelSelectPaint,
                                          CelSelectBoth,
                                          CelSelectConnected};
constexpr CommandId celViewMenu[] = {CelTurnLeft, CelTurnRight,     CelUpright,  CelMirrorView,
                                     Separator,   CelSmoothDisplay, CelNavigator};
constexpr CommandId celPenMenu[] = {CelLine,   CelCurve,    CelRectangle,  CelEllipse,
                                    Separator, CelPressure, CelStabilizer, CelPenSettings};
constexpr CommandId celPaperMenu[] = {CelOnionSkin,   CelOnionSettings, Separator,      CelFlipPrevious,
                                      CelFlipNext,    CelPlayDrawings,  Separator,      CelPreviousDrawing,
                                      CelNextDrawing, Separator,        CelNewDrawing,  CelNewOnOnes,
                                      CelNewOnTwos,   CelNewOnThrees,   Separator,      CelLightTable,
                                      CelPinDrawing,  CelShiftPins,     CelPutBackPins, CelClearPins};
constexpr CommandId celFillMenu[] = {CelAreaFill, Separator, CelFillSettings, CelShowGaps};
constexpr CommandId celCleanMenu[] = {CelDespeckle, CelThicken, CelThin};
constexpr CommandId celPaletteMenu[] = {CelSwapColors, CelPickAnywhere, Separator, CelImportPalette,
                                        CelExportPalette};
constexpr CMenu celSubmenus[] = {{"&View", celViewMenu},          {"Pen and S&hapes", celPenMenu},
                                 {"&Paper", celPaperMenu},        {"&Fill", celFillMenu},
                                 {"Clea&n Up", celCleanMenu},     {"Pale&tte", celPaletteMenu},
                                 {"S&election", celSelectionMenu}};
constexpr CommandId sourcesMenu[] = {SourcesSelectSource,
                                     SourcesScanCels,
                                     SourcesScanPicture,
                                     Separator,
                                     SourcesCameraSettings,
                                     SourcesCaptureCels,
                                     SourcesCapturePicture,
                                     Separator,
                                     SourcesImportCels,
                                     SourcesImportPicture,
                                     SourcesImportSettings,
                                     Separator,
                                     SourcesRecordSound,
                                     SourcesImportSound,
                                     Separator,
                                     SourcesImportSequence};
constexpr CommandId animationMenu[] = {AnimationLineCheck,
                                       Separator,
                                       AnimationMakeFlipbook,
                                       AnimationPlayFlipbook,
                                       AnimationSaveFlipbook,
                                       Separator,
                                       AnimationPlayXsheetSound,
                                       AnimationPlaySelectedSound,
                                       Separator,
                                       AnimationRender};
constexpr CommandId previewMenu[] = {
    PreviewPlay, PreviewGoBack, Separator,     PreviewFirst,    PreviewBack,          PreviewNext,
    PreviewLast, Separator,     PreviewLoop,   PreviewRangeIn,  PreviewRangeOut,      PreviewRangeClear,
    Separator,   PreviewSlower, PreviewFaster, Separator,       PreviewFollowsCamera, PreviewFullSize,
    PreviewFree, Separator,     PreviewScrub,  ViewTransportBar};
constexpr CMenu animationSubmenus[] = {{"Play &in Place", previewMenu}};
constexpr CommandId viewMenu[] = {
    ViewCameraAndXsheet, ViewCamera, ViewXsheet,          ViewCelEditor,   Separator,    ViewToolBar,
    ViewStatusBar,       Separator,  ViewCameraTools,     ViewXsheetTools, ViewCelTools, ViewColors,
    ViewBrushes,         Separator,  ViewAssetThumbnails, ViewSoundWaves,  Separator,    ViewAppearance};
constexpr CommandId sheetViewMenu[] = {SheetZoomIn,       SheetZoomOut,   Separator,
                                       SheetFolderColors, SheetHoldLines, SheetOtherScene};
constexpr CMenu viewSubmenus[] = {{"XSheet at a &Glance", sheetViewMenu}};
constexpr CommandId helpMenu[] = {HelpManual, Separator, HelpAbout, Separator, HelpDemonstration};

constexpr CMenu menus[] = {{"&File", fileMenu},       {"&Edit", editMenu},           {"&Assets", assetsMenu},
                           {"&Camera", cameraMenu},   {"&Xsheet", xsheetMenu},       {"Ce&l", celMenu},
                           {"&Sources", sourcesMenu}, {"A&nimation", animationMenu}, {"&View", viewMenu},
                           {"&Help", helpMenu}};

// Under the right mouse button, with what is hit there as the current cel, level or frame.
constexpr CommandId sheetCellMenu[] = {XsheetOpenDrawing, Separator,  EditCut,
                                       EditCopy,          EditPaste,  Separator,
                                       XsheetEditCelData, XsheetBlur, XsheetTransparency};
constexpr CommandId sheetLevelMenu[] = {
    XsheetRenameLevel, XsheetAddLevel, XsheetDeleteLevel, XsheetSwapLevels, Separator,
    EditCut,           EditCopy,       EditPaste,         Separator,        XsheetMultipleLevels};
constexpr CommandId sheetCameraMenu[] = {XsheetEditCameraData, XsheetInbetweenCamera, Separator, EditRemoveSound};
constexpr CommandId sheetSoundMenu[] = {XsheetSoundShape, XsheetSoundEarlier, XsheetSoundLater,
                                        EditRemoveSound,  Separator,          XsheetDialogue,
                                        XsheetMouths,     Separator,          AnimationPlayXsheetSound};
constexpr CMenu sheetMenus[] = {
    {"Cel", sheetCellMenu}, {"Level", sheetLevelMenu}, {"Camera", sheetCameraMenu}, {"Sound", sheetSoundMenu}};

constexpr CommandId mainToolBar[] = {FileNewScene,
                                     FileOpenScene,
                                     FileSceneSettings,
                                     FileSceneManager,
                                     Separator,
                                     EditUndo,
                                     Separator,
                                     FileSaveAll,
                                     Separator,
                                     AssetsNewFolder,
                                     AssetsDeleteFolder,
                                     Separator,
                                     ViewCameraAndXsheet,
                                     ViewCamera,
                                     ViewXsheet,
                                     ViewCelEditor,
                                     Separator,
                                     SourcesScanCels,
                                     SourcesScanPicture,
                                     Separator,
                                     SourcesCameraSettings,
                                     SourcesCaptureCels,
                                     SourcesCapturePicture,
                                     Separator,
                                     SourcesRecordSound,
                                     Separator,
                                     AnimationLineCheck,
                                     AnimationMakeFlipbook,
                                     AnimationPlayFlipbook,
                                     AnimationSaveFlipbook,
                                     AnimationRender,
                                     Separator,
                                     AnimationPlayXsheetSound,
                                     AnimationPlaySelectedSound};
constexpr CommandId cameraToolBar[] = {
    CameraPan,        CameraZoomIn,   CameraZoomOut,  CameraZoomOneToOne, Separator,     CameraMoveMode,
    CameraRotateMode, CameraZoomMode, Separator,      CameraAntialias,    Separator,     CameraMotionPathSetup,
    Separator,        CameraFit,      Separator,      CameraHandles,      CameraSpacing, CameraDrawPath,
    CameraOneToOne,   Separator,      CameraFields12, CameraTitleSafe};
constexpr CommandId xsheetToolBar[] = {XsheetMultipleLevels, XsheetEditCelData,     XsheetEditCameraData,
                                       XsheetInbetweenLevel, XsheetInbetweenCamera, Separator,
                                       XsheetAddLevel,       XsheetDeleteLevel,     XsheetSwapLevels,
                                       XsheetAddFrames,      XsheetDeleteFrames,    XsheetRenameLevel,
                                       EditRemoveSound};

// What is at hand while drawing.
constexpr CommandId celCanvasMenu[] = {CelBucket,       CelPen,          CelEraser, CelLineBrush, Separator,
                                       EditUndo,        EditRedo,        Separator, CelZoomIn,    CelZoomOut,
                                       CelZoomOneToOne, CelFit,          Separator, CelPickColor, CelColorKey,
                                       Separator,       CelUpdateCamera, Separator, CelAreaFill,  CelFillSettings,
                                       CelShowGaps,     Separator,       CelCut,    CelCopy,      CelPaste};
constexpr CMenu canvasMenu{"Cel Editor", celCanvasMenu};

constexpr CommandId transportBar[] = {PreviewFirst,    PreviewBack,       PreviewPlay,   PreviewNext,
                                      PreviewLast,     Separator,         PreviewLoop,   PreviewRangeIn,
                                      PreviewRangeOut, PreviewRangeClear, Separator,     PreviewFollowsCamera,
                                      PreviewFullSize, Separator,         PreviewSlower, PreviewFaster};

constexpr CommandId celToolBar[] = {
    CelZoomOut, CelZoomOneToOne, CelZoomIn,     CelFit,        CelPan,       Separator,   CelBucket,
    CelPen,     CelEraser,       CelLineBrush,  Separator,     CelPickColor, CelColorKey, Separator,
    CelLine,    CelCurve,        CelRectangle,  CelEllipse,    Separator,    CelPressure, CelStabilizer,
    Separator,  CelOnionSkin,    CelLightTable, CelNewDrawing, Separator,    CelAreaFill, CelShowGaps,
    Separator,  CelSelectRect,   CelLasso,      CelSelectColor};

} // namespace

std::span<const CMenu> Menus() {
    return menus;
}

std::span<const CMenu> SubmenusOf(const CMenu& menu) {
    if (menu.commands.data() == celMenu)
        return celSubmenus;
    if (menu.commands.data() == xsheetMenu)
        return xsheetSubmenus;
    if (menu.commands.data() == cameraMenu)
        return cameraSubmenus;
    if (menu.commands.data() == sheetCellMenu)
        return cellSubmenus;
    if (menu.commands.data() == sheetLevelMenu)
        return levelSubmenus;
    if (menu.commands.data() == viewMenu)
        return viewSubmenus;
    if (menu.commands.data() == animationMenu)
        return animationSubmenus;
    return {};
}

const CMenu& AssetsMenu() {
    return menus[2];
}

const CMenu& CameraMenu() {
    return menus[3];
}

const CMenu& CelCanvasMenu() {
    return canvasMenu;
}

const CMenu& TypedExposuresMenu() {
    return typedExposures;
}

std::span<const CMenu, 4> SheetMenus() {
    return sheetMenus;
}

std::span<const CommandId> MainToolBar() {
    return mainToolBar;
}

std::span<const CommandId> CameraToolBar() {
    return cameraToolBar;
}

std::span<const CommandId> XsheetToolBar() {
    return xsheetToolBar;
}

std::span<const CommandId> CelToolBar() {
    return celToolBar;
}

std::span<const CommandId> TransportBar() {
    return transportBar;
}

} // namespace velmor
