#pragma once

#include "views/xsheet/XSheetLook.h"

#include <optional>
#include <string>

namespace velmor {

/// A sound that is dragged up or down its column. It keeps its distance to the mouse and starts in the sheet; what
/// has been taken hold of moves when it is let go.
class CSoundDrag {
public:
    /// Takes hold of the sound that is heard, or starts, at a point of the sound column. False when there is none.
    [[nodiscard]] bool Begin(const CXSheetSounds& sounds, const CXSheetGeometry& geometry, QPoint point);
    void Move(const CXSheetGeometry& geometry, QPoint point);
    void End() { m_isActive = false; }

    bool IsActive() const { return m_isActive; }
    int From() const { return m_from; }
    /// Where it would start.
    int To() const { return m_to; }
    const std::string& Name() const { return m_name; }
    CDropMark Mark() const { return {{0, m_to}, m_frames, true}; }

private:
    bool m_isActive = false;
    int m_from = 0;
    int m_to = 0;
    int m_grip = 0;   ///< frames from its start to where it is held
    int m_frames = 1; ///< that it lasts
    std::string m_name;
};

} // namespace velmor
