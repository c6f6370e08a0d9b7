#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace velmor {

/// Frames that are played; both ends belong to them.
struct CPreviewRange {
    int first = 0;
    int last = 0;

    int Count() const { return last - first + 1; }
    bool Holds(int frame) const { return frame >= first && frame <= last; }
    bool operator==(const CPreviewRange&) const = default;
};

/// Which frame of a range is due, and which frames were dropped, without clock or picture: how many frames have
/// been played is handed in. A frame is shown while it is due and at no other time; one whose picture is not ready
/// then is dropped.
class CPreviewPlayer {
public:
    struct CPass {
        std::optional<int> show; ///< a frame that has not been shown since it is due
        bool hasEnded = false;   ///< the last frame has had its time
    };

    /// Plays from `start`, a frame of the range, to its end, and when it loops from its first frame again.
    CPreviewPlayer(CPreviewRange range, int start, bool loops) : m_range(range), m_start(start), m_loops(loops) {}

    /// `played` counts frames with their fractions, 0 when the first becomes due. It does not go back.
    CPass Pass(double played, const std::function<bool(int frame)>& isReady);
    /// The one that is due.
    int Frame() const { return FrameAt(m_step); }
    /// Frames that had their time without being shown.
    std::int64_t Dropped() const { return m_dropped; }
    /// The frames that come due, from the one `lead` behind that which is due now: at most `most`, none twice.
    std::vector<int> ToCome(int lead, int most) const;

private:
    int FrameAt(std::int64_t step) const {
        return m_range.first + static_cast<int>((m_start - m_range.first + step) % m_range.Count());
    }
    /// Steps until playing ends, if it does.
    std::int64_t Steps() const { return m_range.last - m_start + 1; }
    void GoTo(std::int64_t step);

    CPreviewRange m_range;
    int m_start;
    bool m_loops;
    std::int64_t m_step = 0;
    bool m_isShown = false; ///< the frame of this step
    std::int64_t m_dropped = 0;
};

} // namespace velmor
