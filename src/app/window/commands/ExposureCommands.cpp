#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/CommandState.h"
#include "scene/exposing/SheetTiming.h"
#include "scene/paper/DrawingSteps.h"

#include <optional>

namespace velmor::commands {

namespace {

bool IsCursorOnEmptyCell(const Target& target) {
    return target.doc.Model().sceneOpen && !CanEditCellData(target.doc.Model());
}
template<SheetEditKind Kind, int Count>
std::optional<CSheetEdit> OutcomeOf(const Target& target) {
    return target.doc.Timing().EditOfSelection(Kind, Count);
}
// A row of a command whose outcome the sheet shows.
template<SheetEditKind Kind, int Count = 1>
constexpr CCommand WithOutcome(CCommand command) {
    command.outcome = OutcomeOf<Kind, Count>;
    return command;
}
template<int Step>
void ExposeOn(Target& target) {
    target.doc.Timing().ExposeOn(Step);
}
bool PushesWhatFollows(const Target& target) {
    return target.doc.Timing().WhatFollows() == Following::Push;
}
void TogglePushing(Target& target) {
    target.doc.Timing().SetWhatFollows(PushesWhatFollows(target) ? Following::Eat : Following::Push);
}

constexpr CCommand rows[] = {
    {CommandId::ExposureNewDrawing, "&New Drawing Here\tENTER", "new-cel", "",
     "Makes a blank cel, exposes it at the cursor and opens it", "New Drawing Here", IsCursorOnEmptyCell, nullptr,
     Do<&CVelmorltDoc::Drawings, &CDrawingSteps::NewDrawingAtCursor>, sheet},
    WithOutcome<SheetEditKind::OnFrames, 1>({CommandId::ExposureOnes, "On &Ones", "on-ones", "",
                                             "Exposes every drawing of the selection for one frame", "On Ones",
                                             HasScene, nullptr, ExposeOn<1>, sheet}),
    WithOutcome<SheetEditKind::OnFrames, 2>({CommandId::ExposureTwos, "On &Twos", "on-twos", "",
                                             "Exposes every drawing of the selection for two frames", "On Twos",
                                             HasScene, nullptr, ExposeOn<2>, sheet}),
    WithOutcome<SheetEditKind::OnFrames, 3>({CommandId::ExposureThrees, "On T&hrees", "on-threes", "",
                                             "Exposes every drawing of the selection for three frames", "On Threes",
                                             HasScene, nullptr, ExposeOn<3>, sheet}),
    WithOutcome<SheetEditKind::OnFrames, 4>({CommandId::ExposureFours, "On &Fours", "on-fours", "",
                                             "Exposes every drawing of the selection for four frames", "On Fours",
                                             HasScene, nullptr, ExposeOn<4>, sheet}),
    WithOutcome<SheetEditKind::Swing>({CommandId::ExposureSwing, "S&wing", "swing", "",
                                       "Has the selection go there and back again, so that it can be repeated",
                                       "Swing", When<CanEditRange>, nullptr,
                                       Do<&CVelmorltDoc::Timing, &CSheetTiming::Swing>, sheet}),
    WithOutcome<SheetEditKind::Random>({CommandId::ExposureRandom, "R&andom", "random", "",
                                        "Shows the drawings of the selection in any order, none twice in a row",
                                        "Random Order", When<CanEditRange>, nullptr,
                                        Do<&CVelmorltDoc::Timing, &CSheetTiming::Random>, sheet}),
    {CommandId::ExposureShift, "&Shift...", "shift", "", "Moves the selected cels to other frames", "Shift Cels",
     HasScene, nullptr, Do<&CVelmorltDoc::Timing, &CSheetTiming::AskAndShift>, sheet},
    {CommandId::ExposureRoll, "&Roll...", "roll", "",
     "Moves cels within the selection: what leaves at one end comes in at the other", "Roll Cels",
     When<CanEditRange>, nullptr, Do<&CVelmorltDoc::Timing, &CSheetTiming::AskAndRoll>, sheet},
    {CommandId::ExposureStretch, "Stret&ch...", "stretch", "", "Has the selection take more or fewer frames",
     "Stretch Time", HasScene, nullptr, Do<&CVelmorltDoc::Timing, &CSheetTiming::AskAndStretch>, sheet},
    {CommandId::ExposureInsertTime, "&Insert Time...", "insert-time", "",
     "Inserts frames at the cursor on all levels, with camera and sounds", "Insert Time", HasScene, nullptr,
     Do<&CVelmorltDoc::Timing, &CSheetTiming::AskAndInsertTime>, sheet},
    {CommandId::ExposureDeleteTime, "&Delete Time...", "delete-time", "",
     "Deletes frames from the cursor on, on all levels, with camera and sounds", "Delete Time", HasScene, nullptr,
     Do<&CVelmorltDoc::Timing, &CSheetTiming::AskAndDeleteTime>, sheet},
    {CommandId::ExposurePush, "&Push What Follows", "", "",
     "Exposures that change their length push what follows, and do not eat it", "Push What Follows", Always,
     PushesWhatFollows, TogglePushing, sheet},
};

} // namespace

std::span<const CCommand> ExposureCommands() {
    return rows;
}

} // namespace velmor::commands
