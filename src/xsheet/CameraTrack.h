#pragma once

#include "image/Geometry.h"
#include "platform/Shared.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace velmor {

/// The camera at one frame.
struct CCameraFrame {
    double panX = 0; ///< frame pixels
    double panY = 0;
    double rotation = 0; ///< radians
    double zoom = 1;     ///< factor

    bool operator==(const CCameraFrame&) const = default;
    /// To the bit, so that -0 is not 0: files keep the difference.
    bool IsIdenticalTo(const CCameraFrame& other) const {
        using Bits = std::array<std::uint64_t, 4>;
        return std::bit_cast<Bits>(*this) == std::bit_cast<Bits>(other);
    }
};

/// What camera input and mouse drags change.
enum class InputMode { Move = 0, Rotate = 1, Zoom = 2 };

/// The camera's value for every frame that an xsheet can have. Copies share what they have in common.
class CCameraTrack {
public:
    static constexpr int capacity = 2000;

    CCameraTrack() { m_frames.resize(capacity); }

    /// `frame` 0 to capacity - 1.
    const CCameraFrame& At(int frame) const { return m_frames[static_cast<std::size_t>(frame)]; }
    /// The value to be written, valid until the track is copied.
    CCameraFrame& MutableAt(int frame) { return m_frames.Change(static_cast<std::size_t>(frame)); }
    void Reset() { *this = CCameraTrack(); }
    /// Takes the first `count` frames, 0 to capacity, of another track.
    void SetFirstFrames(const CCameraTrack& other, int count);

    /// Calls visit(frame) for each frame at which two tracks are not the same to the bit.
    template<class Visit>
    void ForEachDifference(const CCameraTrack& other, Visit visit) const {
        m_frames.ForEachDifference(
            other.m_frames, [](const CCameraFrame& a, const CCameraFrame& b) { return a.IsIdenticalTo(b); },
            [&visit](std::size_t frame) { visit(static_cast<int>(frame)); });
    }

    bool operator==(const CCameraTrack&) const = default;

private:
    CSharedVector<CCameraFrame, 32> m_frames;
};

/// Truncated degrees of a rotation.
int RotationInDegrees(double radians);

/// One step of camera input on the camera itself, for a mouse motion (dx, dy) in frame pixels.
void ApplyCameraInput(CCameraFrame& camera, InputMode mode, int dx, int dy, int frameWidth, int frameHeight);

/// The same for a camera that is moved with the picture: moving takes what is under the pointer along with it, at
/// any zoom and rotation. A camera without zoom is left alone.
void ApplyCameraInputOneToOne(CCameraFrame& camera, InputMode mode, int dx, int dy, CSize frame);

} // namespace velmor
