#include "scene/paper/LightTable.h"

#include "scene/CommandState.h"

#include <algorithm>

namespace velmor {

void CLightTable::Toggle() {
    m_isShown = !m_isShown;
    m_context.Update(UpdateHint::Paper);
}

bool CLightTable::IsPinned(const CDrawing& drawing) const {
    return std::ranges::find(m_context.model.pins, drawing, &CPinnedDrawing::drawing) != m_context.model.pins.end();
}

void CLightTable::PinEdited() {
    const CDrawing drawing = EditedDrawing(m_context.model);
    if (!drawing.IsEmpty())
        Pin(std::span(&drawing, 1));
}

void CLightTable::PinSelected() {
    Pin(SelectedDrawings());
}

bool CLightTable::AreSelectedPinned() const {
    const std::vector<CDrawing> drawings = SelectedDrawings();
    return !drawings.empty() &&
           std::ranges::all_of(drawings, [this](const CDrawing& drawing) { return IsPinned(drawing); });
}

std::vector<CDrawing> CLightTable::SelectedDrawings() const {
    const CSceneModel& model = m_context.model;
    std::vector<CDrawing> drawings;
    if (CanChangeImages(model))
        for (const std::string& name : model.sourceSelection)
            drawings.push_back({ReferenceFolder(model.sourceMode, model.folderName), name});
    return drawings;
}

void CLightTable::Pin(std::span<const CDrawing> drawings) {
    if (drawings.empty())
        return;
    std::vector<CPinnedDrawing>& pins = m_context.model.pins;
    const bool takesAway =
        std::ranges::all_of(drawings, [this](const CDrawing& drawing) { return IsPinned(drawing); });
    for (const CDrawing& drawing : drawings)
        if (takesAway)
            std::erase_if(pins, [&drawing](const CPinnedDrawing& pin) { return pin.drawing == drawing; });
        else if (!IsPinned(drawing))
            pins.push_back({drawing, {}});
    m_isShown |= !takesAway; // or pinning would show nothing
    m_context.Update(UpdateHint::Paper);
}

void CLightTable::Place(std::size_t pin, const CPegPlace& pegs) {
    std::vector<CPinnedDrawing>& pins = m_context.model.pins;
    if (pin >= pins.size() || pins[pin].pegs == pegs)
        return;
    pins[pin].pegs = pegs;
    m_context.Update(UpdateHint::Paper);
}

void CLightTable::PutBack() {
    for (CPinnedDrawing& pin : m_context.model.pins)
        pin.pegs = {};
    m_context.Update(UpdateHint::Paper);
}

bool CLightTable::IsAnyMoved() const {
    return std::ranges::any_of(m_context.model.pins,
                               [](const CPinnedDrawing& pin) { return pin.pegs != CPegPlace(); });
}

void CLightTable::Clear() {
    m_context.model.pins.clear();
    m_context.Update(UpdateHint::Paper);
}

} // namespace velmor
