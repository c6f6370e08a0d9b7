#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/CommandState.h"
#include "scene/paper/Drawing.h"
#include "scene/paper/DrawingSteps.h"
#include "scene/paper/LightTable.h"
#include "scene/paper/Onion.h"

namespace velmor::commands {

namespace {

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

constexpr CCommand rows[] = {
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
};

} // namespace

std::span<const CCommand> CelPaperCommands() {
    return rows;
}

} // namespace velmor::commands
