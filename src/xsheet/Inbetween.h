#pragma once

#include "xsheet/CameraTrack.h"
#include "xsheet/PaceCurve.h"
#include "xsheet/XSheet.h"

#include <optional>

namespace velmor {

enum class InbetweenType { Linear = 0, SlowOut = 1, SlowIn = 2, SlowOutSlowIn = 3, Constant = 4, Drawn = 5 };
enum class LevelSource { Position = 0, Rotation = 1, Zoom = 2, Transparency = 3, Blur = 4 };
enum class CameraSource { Pan = 0, Tilt = 1, Zoom = 2 };

/// Most frames that a value of an inbetween may stand.
inline constexpr int mostInbetweenHold = 4;

/// How values run from key to key: a type, for the drawn one its curve, and how many frames each value stands (on
/// ones, twos, threes), counted from the first key.
struct CInbetweenPace {
    // Most callers know nothing but the type.
    CInbetweenPace(InbetweenType paceType, CPaceCurve drawn = {}, int frames = 1) // NOLINT(*-explicit-*)
        : type(paceType), curve(drawn), hold(frames) {}

    InbetweenType type;
    CPaceCurve curve;
    int hold; ///< 1 to mostInbetweenHold; others count as the nearest of these
};

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

/// What one number becomes from key to key. Of the drawn type in double precision, as exact at any frame number.
class CBetweenValues {
public:
    /// keys.first < keys.last.
    CBetweenValues(const CInbetweenPace& pace, CInbetweenKeys keys, double firstValue, double lastValue);
    /// `frame` is above keys.first; at the last key the number is the key's own, except for Constant.
    double At(int frame) const;

private:
    CInbetweenPace m_pace;
    CInbetweenKeys m_keys;
    double m_first;
    double m_last;
    std::optional<CKeyCurve> m_curve; ///< of the types that have one
};

/// Writes the frames between the keys of the camera; for Constant up to and including the last. keys.first must be
/// below keys.last, here and for a level.
void InbetweenCamera(CCameraTrack& camera, CInbetweenKeys keys, CameraSource source, const CInbetweenPace& pace);

/// Keys of a level inbetween: the first used cell from firstFrame on, the last one from lastFrame back. Nothing
/// when they are less than two frames apart.
std::optional<CInbetweenKeys> FindLevelKeys(const CXSheet& xsheet, int level, int firstFrame, int lastFrame);

/// Writes the used cells between the keys of a level; empty cells stay empty. A drawn curve that swings over leaves
/// transparency and blur within what there is of them.
void InbetweenLevel(CXSheet& xsheet, int level, CInbetweenKeys keys, LevelSource source,
                    const CInbetweenPace& pace);

} // namespace velmor
