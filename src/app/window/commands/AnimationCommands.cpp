#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/CameraOperations.h"
#include "scene/FlipbookOperations.h"
#include "scene/MediaOperations.h"
#include "scene/RenderOperations.h"

namespace velmor::commands {

namespace {

bool HasLastFlipbook(const Target& target) {
    return target.doc.Flipbooks().HasLastFlipbook();
}
bool HasPlacedSounds(const Target& target) {
    return target.doc.Model().sceneOpen && target.doc.Model().Scene().sounds.Count() > 0;
}

constexpr CCommand rows[] = {
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
};

} // namespace

std::span<const CCommand> AnimationCommands() {
    return rows;
}

} // namespace velmor::commands
