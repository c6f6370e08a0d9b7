#pragma once

#include "scene/SceneContext.h"
#include "scene/paper/PinnedDrawing.h"

#include <cstddef>
#include <span>
#include <vector>

namespace velmor {

/// The drawings that are pinned under the one under edit, each on pegs of its own, for as long as the scene is
/// open. The drawings themselves stay as they are.
class CLightTable {
public:
    explicit CLightTable(CSceneContext context) : m_context(context) {}

    bool IsShown() const { return m_isShown; }
    void Toggle();

    /// The last pinned one lies on top.
    std::span<const CPinnedDrawing> Pins() const { return m_context.model.pins; }
    bool IsPinned(const CDrawing& drawing) const;
    /// Pins the drawing under edit, or takes it away.
    void PinEdited();
    /// The same for the selected cels or pictures: all are taken away when all are pinned.
    void PinSelected();
    bool AreSelectedPinned() const;
    /// Shifts and turns a pinned drawing.
    void Place(std::size_t pin, const CPegPlace& pegs);
    /// Puts all back on their pegs.
    void PutBack();
    bool IsAnyMoved() const;
    void Clear();

private:
    std::vector<CDrawing> SelectedDrawings() const;
    void Pin(std::span<const CDrawing> drawings);

    CSceneContext m_context;
    bool m_isShown = true;
};

} // namespace velmor
