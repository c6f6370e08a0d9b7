#pragma once

#include "xsheet/CameraTrack.h"
#include "xsheet/XSheet.h"

#include <optional>

namespace velmor {

enum class InbetweenType { Linear = 0, SlowOut = 1, SlowIn = 2, SlowOutSlowIn = 3, Constant = 4 };
enum class LevelSource { Position = 0, Rotation = 1, Zoom = 2, Transparency = 3, Blur = 4 };
enum class CameraSource { Pan = 0, Tilt = 1, Zoom = 2 };

/// The first and last frame of an inbetween, 0-based.
struct CInbetweenKeys {
    int first = 0;
    int last = 0;

    bool operator==(const CInbetweenKeys&) const = default;
};

/// The cubic through two keys, flat or with the straight line's slope at either. Single precision throughout, frame
/// numbers included; what that loses at high frame numbers is part of existing scenes.
class CKeyCurve {
public:
    /// `type` must not be Constant; keys.first < keys.last.
    CKeyCurve(InbetweenType type, CInbetweenKeys keys, double firstValue, double lastValue);
    double At(int frame) const;

private:
    float m_a = 0;
    float m_b = 0;
    float m_c = 0;
    float m_d = 0;
};

/// Writes the frames between the keys of the camera; for Constant up to and including the last. keys.first must be
/// below keys.last, here and for a level.
void InbetweenCamera(CCameraTrack& camera, CInbetweenKeys keys, CameraSource source, InbetweenType type);

/// Keys of a level inbetween: the first used cell from firstFrame on, the last one from lastFrame back. Nothing
/// when they are less than two frames apart.
std::optional<CInbetweenKeys> FindLevelKeys(const CXSheet& xsheet, int level, int firstFrame, int lastFrame);

/// Writes the used cells between the keys of a level; empty cells stay empty.
void InbetweenLevel(CXSheet& xsheet, int level, CInbetweenKeys keys, LevelSource source, InbetweenType type);

} // namespace velmor
