#pragma once

#include "scene/SceneContext.h"

#include "image/Geometry.h"

#include <array>
#include <optional>

namespace velmor {

/// The dialogs of one cell, its outline in the camera view, and inbetweening of a level.
class CCellOperations {
public:
    explicit CCellOperations(CSceneContext context) : m_context(context) {}

    /// Corners of the cell at (level, cursor frame) in camera-view pixels; nothing for an empty cell.
    std::optional<std::array<CPoint, 4>> GetXSheetCelPoints(int level) const;
    /// Camera-view position of a cell's centre; nothing when out of range or empty.
    std::optional<CPoint> GetXSheetCellCentre(int level, int frame) const;

    void EditCellData();
    void OnXSheetDoTrans(int level);
    void OnXSheetDoBlur(int level);
    void Inbetween();

private:
    CSceneContext m_context;
};

} // namespace velmor
