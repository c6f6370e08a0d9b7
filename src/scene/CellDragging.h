#pragma once

#include "image/RealPoint.h"
#include "scene/SceneContext.h"
#include "xsheet/Inbetween.h"

#include <functional>
#include <optional>
#include <span>
#include <string>

namespace velmor {

/// Cells that are placed with the mouse over the camera picture, other than by camera input: by the handles of a
/// cell, by the ticks of a motion path, along a path that is drawn. A drag is one step of undo and can be given up.
class CCellDragging {
public:
    explicit CCellDragging(CSceneContext context) : m_context(context) {}

    void Begin();
    /// Changes the sheet as it was at Begin(), so that nothing adds up. Nothing before Begin(), and nothing more
    /// when something else has changed the scene since.
    void Change(const std::string& name, const std::function<void(CXSheet&)>& change);
    void End();
    /// The scene is as it was at Begin(), and the history has no step.
    void GiveUp();
    /// Whether Change() would still change anything.
    bool IsUnderWay() const { return m_from.has_value(); }

    /// Positions of a level's used cells from a frame on; empty cells, and frames that there are none of, are
    /// passed over.
    static void Place(CXSheet& xsheet, int level, int firstFrame, std::span<const CRealPoint> positions);

    /// Between which keys a path would be drawn for the cursor's level now. Nothing, after a message, where there
    /// are none.
    std::optional<CInbetweenKeys> KeysOfPath() const;
    /// The used cells between the keys come to stand along a line on the stage, spaced as the level was inbetweened
    /// last.
    void PlaceAlong(CInbetweenKeys keys, std::span<const CRealPoint> drawn);

private:
    void EndStep();

    CSceneContext m_context;
    std::optional<CScene> m_from;
    CScene m_left; ///< as the last change left it
};

} // namespace velmor
