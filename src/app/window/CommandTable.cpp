#include "app/window/CommandTable.h"

#include "app/window/Capturing.h"
#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/CameraOperations.h"
#include "scene/FlipbookOperations.h"
#include "scene/ImportOperations.h"
#include "scene/MediaOperations.h"
#include "scene/RenderOperations.h"
#include "scene/SequenceOperations.h"
#include "scene/SoundOperations.h"
#include "scene/preview/ScenePreview.h"
#include "scene/preview/Scrubbing.h"
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

constexpr CCommand otherRows[] = {
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
          SheetSoundCommands(), LevelCommands(), SheetViewCommands(), NoteCommands(), CelViewCommands(),
          CelPaperCommands(), CelPaintCommands(), CelSelectionCommands(), std::span<const CCommand>(otherRows)})
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
