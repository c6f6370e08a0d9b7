#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/preview/ScenePreview.h"
#include "scene/preview/Scrubbing.h"

namespace velmor::commands {

namespace {

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

constexpr CCommand rows[] = {
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
};

} // namespace

std::span<const CCommand> PreviewCommands() {
    return rows;
}

} // namespace velmor::commands
