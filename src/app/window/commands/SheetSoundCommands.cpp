#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/DialogueOperations.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetCursor.h"

#include <optional>

namespace velmor::commands {

namespace {

bool HasSoundAtCursor(const Target& target) {
    return target.doc.Sounds().SoundAtCursor().has_value();
}
bool HasDialogue(const Target& target) {
    return target.doc.Model().sceneOpen && !target.doc.Model().Scene().dialogue.IsEmpty();
}
// The cursor goes along, so that the same sound moves on.
template<int Frames>
void MoveSound(Target& target) {
    const std::optional<int> from = target.doc.Sounds().SoundAtCursor();
    if (from && target.doc.Sounds().MoveSound(*from, *from + Frames))
        target.doc.Cursor().GoTo({target.doc.Model().cursorLevel, *from + Frames});
}

constexpr CCommand rows[] = {
    {CommandId::XsheetSoundEarlier, "Sound &Earlier\tCtrl+Up", "", "Ctrl+Up",
     "Has the sound at the cursor start a frame earlier", "Sound Earlier", HasSoundAtCursor, nullptr, MoveSound<-1>,
     sheet, Focused},
    {CommandId::XsheetSoundLater, "Sound La&ter\tCtrl+Down", "", "Ctrl+Down",
     "Has the sound at the cursor start a frame later", "Sound Later", HasSoundAtCursor, nullptr, MoveSound<1>,
     sheet, Focused},
    {CommandId::XsheetSoundShape, "Sound Trim and &Level...", "sound-shape", "",
     "Says what of the sound at the cursor is heard, and how loud", "Sound Trim and Level", HasSoundAtCursor,
     nullptr, Do<&CVelmorltDoc::Sounds, &CSoundOperations::AskSoundShape>, sheet},
    {CommandId::XsheetDialogue, "&Dialogue...\tCtrl+L", "dialogue", "Ctrl+L",
     "Writes what is spoken over the selected frames", "Dialogue", HasScene, nullptr,
     Do<&CVelmorltDoc::Dialogue, &CDialogueOperations::AskLine>, sheet},
    {CommandId::XsheetImportDialogue, "&Import Dialogue...", "", "", "Takes what is spoken from a text file",
     "Import Dialogue", HasScene, nullptr, Do<&CVelmorltDoc::Dialogue, &CDialogueOperations::AskAndImport>, sheet},
    {CommandId::XsheetMouths, "&Mouths from Dialogue...", "mouths", "",
     "Fills a level with the mouths of what is spoken, by a chart of your own", "Mouths from Dialogue", HasDialogue,
     nullptr, Do<&CVelmorltDoc::Dialogue, &CDialogueOperations::AskAndFillMouths>, sheet},
};

} // namespace

std::span<const CCommand> SheetSoundCommands() {
    return rows;
}

} // namespace velmor::commands
