#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/AssetOperations.h"
#include "scene/AssetTransforms.h"
#include "scene/CleanupOperations.h"
#include "scene/CommandState.h"
#include "scene/MediaOperations.h"
#include "scene/paper/LightTable.h"

#include <string>

namespace velmor::commands {

namespace {

void EditFirstSelected(Target& target) {
    // A copy: editing may change the selection.
    const std::string name = target.doc.Model().sourceSelection.front();
    target.doc.Assets().EditCel(name);
}

constexpr CCommand rows[] = {
    {CommandId::AssetsNewFolder, "New &Folder", "new-folder", "", "Creates a new cel folder in the scene",
     "New Folder in Scene", HasScene, nullptr, Do<&CVelmorltDoc::Assets, &CAssetOperations::NewFolder>},
    {CommandId::AssetsNewCel, "New &Cel", "new-cel", "", "Creates a new cel", "New Cel", HasFolder, nullptr,
     Do<&CVelmorltDoc::Assets, &CAssetOperations::NewCel>},
    {CommandId::AssetsDelete, "&Delete Asset(s)", "delete-asset", "",
     "Deletes the selected assets from the folder and xsheet", "", When<CanChangeAssets>, nullptr,
     Do<&CVelmorltDoc::Assets, &CAssetOperations::DeleteSelected>},
    {CommandId::AssetsDeleteFolder, "De&lete Folder", "delete-folder", "",
     "Deletes the selected folder from the scene and all cels inside it and their references on the xsheet",
     "Delete Folder In Scene", HasFolder, nullptr, Do<&CVelmorltDoc::Assets, &CAssetOperations::DeleteFolder>},
    {CommandId::AssetsEdit, "&Edit Cel/Picture\tDBL CLK", "edit-asset", "",
     "Edits the selected cel in the cel editor", "Edit Cel", When<CanChangeImages>, nullptr, EditFirstSelected,
     celEditor},
    {CommandId::AssetsPlaySound, "Play &Sound\tDBL CLK", "play-sound", "", "Plays the selected sound", "",
     When<CanPlaySelectedSound>, nullptr, Do<&CVelmorltDoc::Media, &CMediaOperations::PlaySoundAssets>},
    {CommandId::AssetsRename, "Re&name Asset", "rename", "", "Renames the selected cel, picture or sound", "",
     When<CanChangeAssets>, nullptr, Do<&CVelmorltDoc::Assets, &CAssetOperations::RenameSelected>},
    {CommandId::AssetsDuplicate, "Du&plicate Asset", "duplicate", "",
     "Duplicates the selected sound, picture or cel asset", "Duplicate Asset", When<CanChangeAssets>, nullptr,
     Do<&CVelmorltDoc::Assets, &CAssetOperations::DuplicateSelected>},
    {CommandId::AssetsRotate, "&Rotate Cel(s)/Picture(s)", "rotate", "", "Rotates the selected cels or pictures",
     "", When<CanChangeImages>, nullptr, Do<&CVelmorltDoc::Transforms, &CAssetTransforms::RotateSelected>},
    {CommandId::AssetsFlip, "Fli&p Cel(s)/Picture(s)", "flip", "",
     "Flips horizontally or vertically the selected cels or pictures", "", When<CanChangeImages>, nullptr,
     Do<&CVelmorltDoc::Transforms, &CAssetTransforms::FlipSelected>},
    {CommandId::AssetsColorKey, "Color &Key Picture(s)", "color-key", "",
     "Color Keys the selected picture assets with the given key color and tolerance", "Color Key Picture(s)",
     When<CanColorKey>, nullptr, Do<&CVelmorltDoc::Transforms, &CAssetTransforms::ColorKeySelected>},
    {CommandId::AssetsCleanUp, "Clean &Up Cel(s)/Picture(s)", "clean-up", "",
     "Takes specks off scanned drawings, makes lines thicker or thinner and puts drawings on their peg holes",
     "Clean Up Scanned Drawings", When<CanCleanUp>, nullptr,
     Do<&CVelmorltDoc::Cleanups, &CCleanupOperations::AskAndCleanUp>},
    {CommandId::AssetsPin, "Pin to Light &Table", "pin", "",
     "Pins the selected cels or pictures under the drawing in the cel editor, or takes them away", "",
     When<CanChangeImages>, [](const Target& target) { return target.doc.LightTable().AreSelectedPinned(); },
     Do<&CVelmorltDoc::LightTable, &CLightTable::PinSelected>},
};

} // namespace

std::span<const CCommand> AssetCommands() {
    return rows;
}

} // namespace velmor::commands
