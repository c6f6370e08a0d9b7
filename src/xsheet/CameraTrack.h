#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace velmor {

/// The camera at one frame.
struct CCameraFrame {
    double panX = 0; ///< frame pixels
    double panY = 0;
    double rotation = 0; ///< radians
    double zoom = 1;     ///< factor

    bool operator==(const CCameraFrame&) const = default;
};

/// What camera input and mouse drags change.
enum class InputMode { Move = 0, Rotate = 1, Zoom = 2 };

/// The camera's value for every frame that an xsheet can have.
class CCameraTrack {
public:
    static constexpr int capacity = 2000;

    CCameraTrack() : m_frames(capacity) {}

    /// `frame` 0 to capacity - 1.
    const CCameraFrame& At(int frame) const { return m_frames[static_cast<std::size_t>(frame)]; }
    CCameraFrame& At(int frame) { return m_frames[static_cast<std::size_t>(frame)]; }
    void Reset() { m_frames.assign(capacity, CCameraFrame{}); }
    /// The first frames, for snapshots.
    std::vector<CCameraFrame> FirstFrames(int count) const;
    void SetFirstFrames(std::span<const CCameraFrame> frames);

    bool operator==(const CCameraTrack&) const = default;

private:
    std::vector<CCameraFrame> m_frames;
};

/// Truncated degrees of a rotation.
int RotationInDegrees(double radians);

/// One step of camera input on the camera itself, for a mouse motion (dx, dy) in frame pixels.
void ApplyCameraInput(CCameraFrame& camera, InputMode mode, int dx, int dy, int frameWidth, int frameHeight);

} // namespace velmor
