#pragma once

#include "sound/SoundPlacement.h"
#include "views/xsheet/XSheetLook.h"

namespace velmor {

/// What of a sound is held.
enum class SoundGrip { Whole, Start, End };

/// A sound that is dragged up or down its column, or an end of it: what was left out there is heard again, or more
/// of it is left out, while the rest stays under its frames. What is held keeps its distance to the mouse, and
/// changes when it is let go.
class CSoundDrag {
public:
    /// Takes hold of the sound that is heard, or starts, at a point of the sound column; for `trims` of its nearer
    /// end. False when there is none.
    [[nodiscard]] bool Begin(const CXSheetSounds& sounds, const CXSheetGeometry& geometry, QPoint point,
                             bool trims);
    void Move(const CXSheetGeometry& geometry, QPoint point);
    void End() { m_isActive = false; }

    bool IsActive() const { return m_isActive; }
    SoundGrip Grip() const { return m_grip; }
    /// Where it starts, and the sound as it would be placed.
    int From() const { return m_held.frame; }
    const CSoundPlacement& Placed() const { return m_placed; }
    /// Frames that it would last.
    int Frames() const { return m_frames; }
    CDropMark Mark() const { return {{0, m_placed.frame}, m_frames, true}; }

private:
    void MoveWhole(int frames, int frameCount);
    void MoveStart(int frames);
    void MoveEnd(int frames);

    bool m_isActive = false;
    SoundGrip m_grip = SoundGrip::Whole;
    CSoundPlacement m_held;
    CSoundPlacement m_placed;
    int m_gripFrame = 0;  ///< where it is held
    int m_heldFrames = 1; ///< that it lasts as it is
    int m_frames = 1;
    int m_samplesPerFrame = 1;
};

} // namespace velmor
