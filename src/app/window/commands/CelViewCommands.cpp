#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/AssetOperations.h"
#include "scene/CommandState.h"

namespace velmor::commands {

namespace {

constexpr CCommand rows[] = {
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
};

} // namespace

std::span<const CCommand> CelViewCommands() {
    return rows;
}

} // namespace velmor::commands
