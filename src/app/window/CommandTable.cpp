#include "app/window/CommandTable.h"

#include "app/window/Capturing.h"
#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/AssetOperations.h"
#include "scene/CameraOperations.h"
#include "scene/CleanupOperations.h"
#include "scene/CommandState.h"
#include "scene/FlipbookOperations.h"
#include "scene/ImportOperations.h"
#include "scene/MediaOperations.h"
#include "scene/PaletteOperations.h"
#include "scene/RecolorOperations.h"
#include "scene/RenderOperations.h"
#include "scene/SequenceOperations.h"
#include "scene/SoundOperations.h"
#include "scene/paper/Drawing.h"
#include "scene/paper/DrawingSteps.h"
#include "scene/paper/LightTable.h"
#include "scene/paper/Onion.h"
#include "scene/preview/ScenePreview.h"
#include "scene/preview/Scrubbing.h"
#include "views/cel/PieceClipboard.h"
#include "views/cel/SelectHand.h"
#include "views/source/SourceView.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

#include <algorithm>
#include <vector>

namespace velmor {

namespace {

using namespace commands;

template<bool Camera, bool Xsheet, bool CelEditor>
bool ShowsOnly(const Target& target) {
    return target.frame.Panes().IsArrangement(Camera, Xsheet, CelEditor);
}
template<SourceMode Kind>
void Capture(Target& target) {
    target.frame.Capturing().Capture(Kind);
}
bool HasLastFlipbook(const Target& target) {
    return target.doc.Flipbooks().HasLastFlipbook();
}
bool HasFrames(const Target& target) {
    return target.doc.Model().sceneOpen && target.doc.Model().Scene().xsheet.FrameCount() > 0;
}
bool IsPlaying(const Target& target) {
    return target.doc.Preview().IsPlaying();
}
void PlayOrStop(Target& target) {
    if (IsPlaying(target))
        target.doc.Preview().Stop();
    else
        target.doc.Preview().Play();
}
template<int Frames>
void StepFrames(Target& target) {
    target.doc.Preview().Step(Frames);
}
template<bool CPreviewChoices::*Choice>
bool HasChoice(const Target& target) {
    return target.doc.Preview().Choices().*Choice;
}
template<bool CPreviewChoices::*Choice>
void ToggleChoice(Target& target) {
    CPreviewChoices choices = target.doc.Preview().Choices();
    choices.*Choice = !(choices.*Choice);
    target.doc.Preview().SetChoices(choices);
}
template<int (CPreviewChoices::*Next)() const>
bool CanChangeSpeed(const Target& target) {
    const CPreviewChoices& choices = target.doc.Preview().Choices();
    return (choices.*Next)() != choices.speed;
}
template<int (CPreviewChoices::*Next)() const>
void ChangeSpeed(Target& target) {
    CPreviewChoices choices = target.doc.Preview().Choices();
    choices.speed = (choices.*Next)();
    target.doc.Preview().SetChoices(choices);
}
bool HasPlacedSounds(const Target& target) {
    return target.doc.Model().sceneOpen && target.doc.Model().Scene().sounds.Count() > 0;
}
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
template<int Frames>
bool IsNewDrawingHold(const Target& target) {
    return target.doc.Drawings().Hold() == Frames;
}
template<int Frames>
void SetNewDrawingHold(Target& target) {
    target.doc.Drawings().SetHold(Frames);
}
bool HasPins(const Target& target) {
    return !target.doc.LightTable().Pins().empty();
}
bool HasShownPins(const Target& target) {
    return HasPins(target) && target.doc.LightTable().IsShown();
}
template<auto Operation>
void Selection(Target& target) {
    (target.doc.Selection().*Operation)();
    target.cel.ShowEdit({});
}
// An operation that changes the image, with its arguments.
template<auto Operation, auto... Arguments>
void EditSelection(Target& target) {
    target.cel.ShowEdit((target.doc.Selection().*Operation)(Arguments...));
}
template<SelectWhat What>
bool IsTaken(const Target& target) {
    return target.doc.Selection().What() == What;
}
template<SelectWhat What>
void Take(Target& target) {
    target.doc.Selection().SetWhat(What);
    target.cel.ShowEdit({});
}
void CopySelection(Target& target) {
    if (const std::optional<CPiece> piece = target.doc.Selection().Copied())
        PutOnClipboard(*piece);
}
void CutSelection(Target& target) {
    CopySelection(target);
    target.cel.ShowEdit(target.doc.Selection().Delete("Cut"));
}
void DeleteSelection(Target& target) {
    target.cel.ShowEdit(target.doc.Selection().Delete());
}
void PastePiece(Target& target) {
    std::optional<CPiece> piece = TakeFromClipboard(target.cel.Middle());
    if (!piece)
        return;
    if (!CSelectHand::Holds(target.cel.Tool()))
        target.cel.SetTool(CelTool::SelectRect); // whose handles it gets
    target.cel.ShowEdit(target.doc.Selection().Paste(std::move(*piece)));
}
bool CanReplaceColor(const Target& target) {
    return HasEditedImage(target.doc.Model()) || CanChangeImages(target.doc.Model());
}

constexpr CCommand otherRows[] = {
    {CommandId::CelZoomIn, "Zoom &In\tCTRL +", "zoom-in", "Ctrl++; Ctrl+=", "Zooms One Level In", "Zoom In",
     When<HasEditedImage>, nullptr, Cel<&CCelView::ZoomIn>, celEditor, Shown},
    {CommandId::CelZoomOut, "Zoom &Out\tCTRL -", "zoom-out", "Ctrl+-", "Zooms one level out", "Zoom Out",
     When<HasEditedImage>, nullptr, Cel<&CCelView::ZoomOut>, celEditor, Shown},
    {CommandId::CelZoomOneToOne, "Zoom &1:1\tCTRL *", "zoom-one", "Ctrl+*", "Zooms to 100%", "Zoom 1:1",
     When<HasEditedImage>, nullptr, Cel<&CCelView::ZoomOneToOne>, celEditor, Shown, CommandGroup::None, "1"},
    {CommandId::CelPan, "&Pan", "pan", "", "Toggles Pan Mode", "Pan", When<HasEditedImage>,
     [](const Target& target) { return target.cel.IsPanMode(); }, Cel<&CCelView::TogglePan>, celEditor},
    {CommandId::CelUpdateCamera, "&Update Camera", "update-camera", "",
     "Updates the camera with the current cel editing", "Update Camera", When<HasEditedImage>, nullptr,
     Do<&CVelmorltDoc::Assets, &CAssetOperations::UpdateCamera>},
    {CommandId::CelSettings, "&Settings", "cel-settings", "", "Shows the cel view settings dialog", "", Always,
     nullptr, Cel<&CCelView::EditGrid>},
    {CommandId::CelFit, "&Fit to Window\t0", "zoom-fit", "0", "Shows the whole image, as large as there is room",
     "Fit to Window", When<HasEditedImage>, nullptr, Cel<&CCelView::FitToWindow>, celEditor, Focused},
    {CommandId::CelTurnLeft, "Turn &Left\t4", "turn-left", "4",
     "Turns the view against the clock, as one turns the paper", "Turn View Left", When<HasEditedImage>, nullptr,
     Cel<&CCelView::TurnLeft>, celEditor, Focused},
    {CommandId::CelTurnRight, "Turn &Right\t6", "turn-right", "6",
     "Turns the view with the clock, as one turns the paper", "Turn View Right", When<HasEditedImage>, nullptr,
     Cel<&CCelView::TurnRight>, celEditor, Focused},
    {CommandId::CelUpright, "&Upright\t5", "turn-upright", "5", "Shows the image upright and not mirrored",
     "Upright View", When<HasEditedImage>, nullptr, Cel<&CCelView::TurnUpright>, celEditor, Focused},
    {CommandId::CelMirrorView, "&Mirror\tM", "mirror-view", "M",
     "Mirrors the view left to right, which shows the faults of a drawing; the drawing stays as it is",
     "Mirror View", When<HasEditedImage>, [](const Target& target) { return target.cel.Turn().mirrored; },
     Cel<&CCelView::MirrorView>, celEditor, Focused},
    {CommandId::CelSmoothDisplay, "&Smooth Display", "smooth-display", "",
     "Shows lines smooth where the image is shown smaller than it is", "Smooth Display", Always,
     [](const Target& target) { return target.cel.IsSmooth(); }, Cel<&CCelView::ToggleSmooth>, celEditor},
    {CommandId::CelNavigator, "&Navigator", "navigator", "",
     "Shows the whole image in a corner where it is larger than the view", "Navigator", Always,
     [](const Target& target) { return target.cel.HasNavigator(); }, Cel<&CCelView::ToggleNavigator>, celEditor},
    {CommandId::CelOnionSkin, "&Onion Skin\tO", "onion-skin", "O",
     "Lets the drawings before and after shine through the one under edit", "Onion Skin", Always,
     [](const Target& target) { return target.doc.Onion().Settings().shown; },
     Do<&CVelmorltDoc::Onion, &COnion::Toggle>, celEditor, Focused},
    {CommandId::CelOnionSettings, "Onion Skin &Settings...", "onion-settings", "",
     "Chooses which drawings shine through, and in which colours", "Onion Skin Settings", Always, nullptr,
     Do<&CVelmorltDoc::Onion, &COnion::EditSettings>},
    {CommandId::CelFlipPrevious, "Flip to &Previous\t,", "flip-previous", ",",
     "Shows the drawing before this one while the key is held", "Flip to Previous Drawing", When<HasEditedImage>,
     nullptr, Cel<&CCelView::FlipToPrevious>, celEditor, Focused},
    {CommandId::CelFlipNext, "Flip to &Next\t.", "flip-next", ".",
     "Shows the drawing after this one while the key is held", "Flip to Next Drawing", When<HasEditedImage>,
     nullptr, Cel<&CCelView::FlipToNext>, celEditor, Focused},
    {CommandId::CelPlayDrawings, "Pla&y Level\t/", "play-drawings", "/",
     "Plays the drawings of the current level in the cel editor, round and round", "Play Level",
     When<HasEditedImage>, [](const Target& target) { return target.cel.Flipped().IsPlaying(); },
     Cel<&CCelView::TogglePlaying>, celEditor, Focused},
    {CommandId::CelPreviousDrawing, "P&revious Drawing\tPGUP", "previous-drawing", "PgUp",
     "Opens the drawing before this one", "Previous Drawing", HasScene, nullptr, Cel<&CCelView::OpenPrevious>,
     celEditor, Focused},
    {CommandId::CelNextDrawing, "Ne&xt Drawing\tPGDOWN", "next-drawing", "PgDown",
     "Opens the drawing after this one", "Next Drawing", HasScene, nullptr, Cel<&CCelView::OpenNext>, celEditor,
     Focused},
    {CommandId::CelNewDrawing, "New &Drawing After This One\tN", "new-drawing", "N",
     "Makes a blank cel that follows this one, exposes it behind it and opens it", "New Drawing After This One",
     HasScene, nullptr, Cel<&CCelView::OpenNew>, celEditor, Focused},
    {CommandId::CelNewOnOnes,
     "New Drawings on On&es",
     "",
     "",
     "Exposes a new drawing for one frame",
     "",
     Always,
     IsNewDrawingHold<1>,
     SetNewDrawingHold<1>,
     {},
     Everywhere,
     NewDrawingHolds},
    {CommandId::CelNewOnTwos,
     "New Drawings on &Twos",
     "",
     "",
     "Exposes a new drawing for two frames",
     "",
     Always,
     IsNewDrawingHold<2>,
     SetNewDrawingHold<2>,
     {},
     Everywhere,
     NewDrawingHolds},
    {CommandId::CelNewOnThrees,
     "New Drawings on T&hrees",
     "",
     "",
     "Exposes a new drawing for three frames",
     "",
     Always,
     IsNewDrawingHold<3>,
     SetNewDrawingHold<3>,
     {},
     Everywhere,
     NewDrawingHolds},
    {CommandId::CelLightTable, "&Light Table\tT", "light-table", "T",
     "Shows or hides the drawings that are pinned under the one under edit", "Light Table", HasPins, HasShownPins,
     Do<&CVelmorltDoc::LightTable, &CLightTable::Toggle>, celEditor, Focused},
    {CommandId::CelPinDrawing, "Pin This Dra&wing\tSHIFT T", "pin", "Shift+T",
     "Pins this drawing under those that are opened next, or takes it away", "Pin This Drawing",
     When<HasEditedImage>,
     [](const Target& target) { return target.doc.LightTable().IsPinned(EditedDrawing(target.doc.Model())); },
     Do<&CVelmorltDoc::LightTable, &CLightTable::PinEdited>, celEditor, Focused},
    {CommandId::CelShiftPins, "Shift and Tra&ce\tCTRL T", "shift-pins", "Ctrl+T",
     "Moves pinned drawings with the pointer, and turns them with Shift; they stay as they are",
     "Shift and Trace: move pinned drawings", HasShownPins,
     [](const Target& target) { return target.cel.ShiftsPins(); }, Cel<&CCelView::ToggleShiftingPins>, celEditor,
     Focused},
    {CommandId::CelPutBackPins, "P&ut Pinned Drawings Back", "", "", "Puts all pinned drawings back on their pegs",
     "", [](const Target& target) { return target.doc.LightTable().IsAnyMoved(); }, nullptr,
     Do<&CVelmorltDoc::LightTable, &CLightTable::PutBack>, celEditor},
    {CommandId::CelClearPins, "Clear Light T&able", "", "", "Takes all pinned drawings away", "", HasPins, nullptr,
     Do<&CVelmorltDoc::LightTable, &CLightTable::Clear>, celEditor},
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
    ToolCommand<CommandId::CelSelectRect, CelTool::SelectRect>(),
    ToolCommand<CommandId::CelLasso, CelTool::Lasso>(),
    ToolCommand<CommandId::CelSelectColor, CelTool::SelectColor>(),
    {CommandId::CelSelectAll, "Select &All\tCtrl+A", "", "Ctrl+A", "Selects the whole drawing", "Select All",
     When<HasEditedImage>, nullptr, Selection<&CCelSelection::SelectAll>, celEditor, Focused},
    {CommandId::CelSelectNone, "Select &Nothing\tCtrl+D", "", "Ctrl+D",
     "Puts down what floats, and selects nothing any more", "Select Nothing", HasSelection, nullptr,
     Selection<&CCelSelection::SelectNone>, celEditor, Focused},
    {CommandId::CelSelectInverse, "Select &Inverse\tCtrl+Shift+I", "", "Ctrl+Shift+I",
     "Selects what is not selected", "Select Inverse", When<HasEditedImage>, nullptr,
     Selection<&CCelSelection::Invert>, celEditor, Focused},
    {CommandId::CelCut, "Cu&t\tCtrl+X", "cut", "Ctrl+X; Shift+Del",
     "Cuts what is selected out of the drawing and puts it on the Clipboard", "Cut Selection", HasSelection, nullptr,
     CutSelection, celEditor, Focused},
    {CommandId::CelCopy, "&Copy\tCtrl+C", "copy", "Ctrl+C; Ctrl+Ins",
     "Puts what is selected of the drawing on the Clipboard", "Copy Selection", HasSelection, nullptr, CopySelection,
     celEditor, Focused},
    {CommandId::CelPaste, "&Paste\tCtrl+V", "paste", "Ctrl+V; Shift+Ins",
     "Lets what is on the Clipboard float over the drawing", "Paste into the drawing", When<HasEditedImage>, nullptr,
     PastePiece, celEditor, Focused},
    {CommandId::CelDelete, "&Delete\tDEL", "", "Del; Backspace", "Empties what is selected of the drawing",
     "Delete Selection", HasSelection, nullptr, DeleteSelection, celEditor, Focused},
    {CommandId::CelMirrorHorizontally, "Mirror &Horizontally", "flip", "", "Mirrors what is selected, left for right",
     "Mirror selection horizontally", HasSelection, nullptr, EditSelection<&CCelSelection::MirrorX>, celEditor},
    {CommandId::CelMirrorVertically, "Mirror &Vertically", "", "", "Mirrors what is selected, top for bottom",
     "Mirror selection vertically", HasSelection, nullptr, EditSelection<&CCelSelection::MirrorY>, celEditor},
    {CommandId::CelQuarterLeft, "Quarter Turn &Left", "", "", "Turns what is selected by a quarter against the clock",
     "Turn selection left", HasSelection, nullptr, EditSelection<&CCelSelection::TurnBy, 90>, celEditor},
    {CommandId::CelQuarterRight, "Quarter Turn &Right", "rotate", "",
     "Turns what is selected by a quarter with the clock", "Turn selection right", HasSelection, nullptr,
     EditSelection<&CCelSelection::TurnBy, -90>, celEditor},
    {CommandId::CelSelectLines, "Take Lin&es", "", "", "Of what is selected, only lines are taken", "Take only lines",
     Always, IsTaken<SelectWhat::Line>, Take<SelectWhat::Line>, celEditor, Everywhere, CommandGroup::SelectionParts},
    {CommandId::CelSelectPaint, "Take Pai&nt", "", "", "Of what is selected, only paint is taken", "Take only paint",
     Always, IsTaken<SelectWhat::Paint>, Take<SelectWhat::Paint>, celEditor, Everywhere, CommandGroup::SelectionParts},
    {CommandId::CelSelectBoth, "Take &Both", "", "", "Lines and paint of what is selected are taken",
     "Take lines and paint", Always, IsTaken<SelectWhat::Both>, Take<SelectWhat::Both>, celEditor, Everywhere,
     CommandGroup::SelectionParts},
    {CommandId::CelSelectConnected, "Color as Far as It Han&gs Together", "", "",
     "Selecting by color takes the area that was clicked on, and not all of the color",
     "Select by color only as far as it hangs together", Always,
     [](const Target& target) { return target.doc.Selection().IsConnected(); },
     [](Target& target) { target.doc.Selection().SetConnected(!target.doc.Selection().IsConnected()); }, celEditor},
    {CommandId::CelReplaceColor, "Replace Colo&r...", "", "",
     "Puts one color in the place of another, in this drawing or in a whole folder", "Replace Color",
     CanReplaceColor, nullptr,
     [](Target& target) {
         target.doc.Selection().Drop();
         target.doc.Recoloring().AskAndReplace(target.doc.Selection().Color());
     }},

    // Sources
    {CommandId::SourcesSelectSource, "&Select Source", "select-source", "",
     "Shows the scanner source selection dialog", "", Always, nullptr, Frame<&CMainFrame::SelectScanSource>},
    {CommandId::SourcesScanCels, "Scan &Cels", "scan-cels", "", "Shows the scanners interface to scan cels",
     "Scan Cels", HasFolder, nullptr, Frame<&CMainFrame::ScanCels>},
    {CommandId::SourcesScanPicture, "Sca&n Picture", "scan-picture", "", "Scans a color image",
     "Scan Color Picture", HasScene, nullptr, Frame<&CMainFrame::ScanPicture>},
    {CommandId::SourcesCameraSettings, "C&amera Settings", "camera-settings", "",
     "Shows the camera settings dialog", "", Always, nullptr,
     [](Target& target) { target.frame.Capturing().Setup(); }},
    {CommandId::SourcesCaptureCels, "Cap&ture Cels", "capture-cels", "",
     "Shows the camera capture dialog for importing cels", "", HasFolder, nullptr, Capture<SourceMode::Cels>},
    {CommandId::SourcesCapturePicture, "Capture Pic&ture", "capture-picture", "",
     "Captures a color picture to the picture assets", "Capture Picture", HasScene, nullptr,
     Capture<SourceMode::Pictures>},
    {CommandId::SourcesImportCels, "&Import Cels", "import-cels", "",
     "Import cel(s) from disk to the current folder", "Import Cels", HasFolder, nullptr,
     Do<&CVelmorltDoc::Imports, &CImportOperations::AskAndImportCels>},
    {CommandId::SourcesImportPicture, "Import Pict&ure", "import-picture", "",
     "Import Picture(s) from disk to the current scene", "Import Pictures", HasScene, nullptr,
     Do<&CVelmorltDoc::Imports, &CImportOperations::AskAndImportPictures>},
    {CommandId::SourcesImportSettings, "I&mport Settings", "import-settings", "",
     "Sets the graylevel threshold to be used in the import functions", "", Always, nullptr,
     Do<&CVelmorltDoc::Imports, &CImportOperations::EditImportSettings>},
    {CommandId::SourcesRecordSound, "&Record Sound", "record-sound", "", "Records a new sound", "Record Sound",
     HasScene, nullptr, Do<&CVelmorltDoc::Media, &CMediaOperations::RecordSound>},
    {CommandId::SourcesImportSound, "Import Soun&d", "import-sound", "", "Imports a sound from a windows wave file",
     "Import Sound", HasScene, nullptr, Do<&CVelmorltDoc::Sounds, &CSoundOperations::AskAndImportSound>},
    {CommandId::SourcesImportSequence, "Import Se&quence...", "import-sequence", "",
     "Imports numbered files at once, as cels or pictures, and exposes them", "Import Sequence", HasScene, nullptr,
     Do<&CVelmorltDoc::Sequences, &CSequenceOperations::AskAndImport>},

    // Animation
    {CommandId::AnimationLineCheck, "&Line Check", "line-check", "",
     "Shows the line check slider to preview animation", "Line Check", HasScene, nullptr,
     Do<&CVelmorltDoc::Camera, &CCameraOperations::CheckLines>},
    {CommandId::AnimationMakeFlipbook, "&Make Flipbook", "make-flipbook", "", "Creates an display a flipbook",
     "Make FlipBook", HasScene, nullptr, Do<&CVelmorltDoc::Media, &CMediaOperations::MakeFlipbook>},
    {CommandId::AnimationPlayFlipbook, "&Play Last Flipbook", "play-flipbook", "",
     "Plays the last generated flipbook", "Play Last Flipbook", HasLastFlipbook, nullptr,
     Do<&CVelmorltDoc::Media, &CMediaOperations::PlayLastFlipbook>},
    {CommandId::AnimationSaveFlipbook, "&Save Last Flipbook", "save-flipbook", "",
     "Saves the last generated flipbook to a seperate location for later viewing", "Save Last Flipbook",
     HasLastFlipbook, nullptr, Do<&CVelmorltDoc::Flipbooks, &CFlipbookOperations::SaveLastFlipbook>},
    {CommandId::AnimationPlayXsheetSound, "Play Sound on &Xsheet", "play-xsheet-sound", "",
     "Plays the sound on the xsheet", "Play sound on xsheet", HasPlacedSounds, nullptr,
     Do<&CVelmorltDoc::Media, &CMediaOperations::PlayXSheetSound>},
    {CommandId::AnimationPlaySelectedSound, "Play selected Sound", "play-selected-sound", "",
     "Plays the selected part of sound on xsheet", "Play selected sound", HasScene, nullptr,
     Do<&CVelmorltDoc::Media, &CMediaOperations::PlaySelectedSound>},
    {CommandId::AnimationRender, "&Render", "render", "",
     "Renders the animation to disk with required file formats", "Render!", HasScene, nullptr,
     Do<&CVelmorltDoc::Renders, &CRenderOperations::AskAndRender>},

    // Animation, Play in Place
    {CommandId::PreviewPlay, "&Play or Stop\tSpace", "preview-play", "",
     "Plays the selected frames, the set range or the whole sheet in the camera view, with its sound; once more: "
     "stops there",
     "Play or Stop (Space)", HasFrames, IsPlaying, PlayOrStop, camera},
    {CommandId::PreviewGoBack, "Stop and Go &Back\tEsc", "", "",
     "Stops playing and leaves the cursor where it was (Esc in the camera view or the xsheet)", "", IsPlaying,
     nullptr, Do<&CVelmorltDoc::Preview, &CScenePreview::GoBack>, camera},
    {CommandId::PreviewFirst, "&First Frame", "preview-first", "",
     "The cursor goes to the first of the frames that are played", "First Frame", HasFrames, nullptr,
     Do<&CVelmorltDoc::Preview, &CScenePreview::GoToFirst>, camera},
    {CommandId::PreviewBack, "P&revious Frame", "preview-back", "", "The cursor goes one frame back",
     "Previous Frame", HasFrames, nullptr, StepFrames<-1>, camera},
    {CommandId::PreviewNext, "&Next Frame", "preview-next", "", "The cursor goes one frame on", "Next Frame",
     HasFrames, nullptr, StepFrames<1>, camera},
    {CommandId::PreviewLast, "L&ast Frame", "preview-last", "",
     "The cursor goes to the last of the frames that are played", "Last Frame", HasFrames, nullptr,
     Do<&CVelmorltDoc::Preview, &CScenePreview::GoToLast>, camera},
    {CommandId::PreviewLoop, "&Loop", "preview-loop", "", "Plays again and again", "Loop", Always,
     HasChoice<&CPreviewChoices::loops>, ToggleChoice<&CPreviewChoices::loops>, camera},
    {CommandId::PreviewRangeIn, "Range Begins &Here", "preview-in", "",
     "What is played begins at the first selected frame, while it plays at the one that is seen",
     "Range Begins Here", HasFrames, nullptr, Do<&CVelmorltDoc::Preview, &CScenePreview::SetIn>, camera},
    {CommandId::PreviewRangeOut, "Range &Ends Here", "preview-out", "",
     "What is played ends with the last selected frame, while it plays with the one that is seen",
     "Range Ends Here", HasFrames, nullptr, Do<&CVelmorltDoc::Preview, &CScenePreview::SetOut>, camera},
    {CommandId::PreviewRangeClear, "&Clear Range", "preview-clear", "",
     "Plays the whole sheet, or the frames that are selected", "Clear Range",
     [](const Target& target) { return target.doc.Preview().HasSetRange(); }, nullptr,
     Do<&CVelmorltDoc::Preview, &CScenePreview::ClearRange>, camera},
    {CommandId::PreviewSlower, "&Slower", "preview-slower", "", "Plays at a lower speed", "Slower",
     CanChangeSpeed<&CPreviewChoices::Slower>, nullptr, ChangeSpeed<&CPreviewChoices::Slower>, camera},
    {CommandId::PreviewFaster, "Fas&ter", "preview-faster", "", "Plays at a higher speed", "Faster",
     CanChangeSpeed<&CPreviewChoices::Faster>, nullptr, ChangeSpeed<&CPreviewChoices::Faster>, camera},
    {CommandId::PreviewFollowsCamera, "Through the &Moving Camera", "preview-camera", "",
     "Plays what the moving camera sees; else everything is seen from where the camera stands at the cursor",
     "Through the Moving Camera", Always, HasChoice<&CPreviewChoices::followsCamera>,
     ToggleChoice<&CPreviewChoices::followsCamera>, camera},
    {CommandId::PreviewFullSize, "F&ull Size", "preview-full", "",
     "Composes every pixel of the frames; else no more than the camera view shows, which is quicker", "Full Size",
     Always, HasChoice<&CPreviewChoices::fullSize>, ToggleChoice<&CPreviewChoices::fullSize>, camera},
    {CommandId::PreviewFree, "Forget Ready Frames", "", "",
     "Gives back the memory of the frames that are ready to be played", "",
     [](const Target& target) { return target.doc.Preview().HoldsFrames(); }, nullptr,
     Do<&CVelmorltDoc::Preview, &CScenePreview::Free>, camera},
    {CommandId::PreviewScrub, "&Drag in Frame Column to Scrub", "", "",
     "Dragging over the frame numbers of the xsheet shows each frame and plays its sound, and with Ctrl selects; "
     "else the other way round",
     "", Always, [](const Target& target) { return target.doc.Scrubbing().IsByColumn(); },
     [](Target& target) { target.doc.Scrubbing().SetByColumn(!target.doc.Scrubbing().IsByColumn()); }, sheet},
    {CommandId::ViewTransportBar, "Transp&ort Bar", "", "", "Show or hide the bar under the camera view", "",
     Always, HasBar<PaneBar::Transport>, ToggleBar<PaneBar::Transport>, camera},

    // View
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

    // Help
    {CommandId::HelpManual, "&Online Manual", "manual", "",
     "Opens the online acrobat format manuals, You must have Abobe Acrobat installed in your system.", "", Always,
     nullptr, Frame<&CMainFrame::ShowManual>},
    {CommandId::HelpAbout, "&About Personal Velmor..", "about", "",
     "Display program information, version number and copyright", "About", Always, nullptr,
     Frame<&CMainFrame::ShowAbout>},
    {CommandId::HelpDemonstration, "&Demonstration Scene", "open-scene", "",
     "Opens a finished scene to look around in, which is made where there is none", "Demonstration Scene", Always,
     nullptr, Frame<&CMainFrame::OpenDemonstration>},
};

std::vector<CCommand> AllRows() {
    using namespace commands;
    std::vector<CCommand> all;
    for (const std::span<const CCommand> menu :
         {FileCommands(), EditCommands(), AssetCommands(), CameraCommands(), SheetCommands(), ExposureCommands(),
          SheetSoundCommands(), LevelCommands(), SheetViewCommands(), NoteCommands(),
          std::span<const CCommand>(otherRows)})
        all.insert(all.end(), menu.begin(), menu.end());
    return all;
}

} // namespace

std::span<const CCommand> Commands() {
    static const std::vector<CCommand> all = AllRows(); // actions keep the address of their row
    return all;
}

const CCommand& CommandOf(CommandId id) {
    return *std::ranges::find(Commands(), id, &CCommand::id);
}

} // namespace velmor
