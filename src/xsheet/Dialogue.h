#pragma once

#include "platform/Shared.h"

#include <string>
#include <vector>

namespace velmor {

/// What somebody says, from one frame to another.
struct CSpokenLine {
    int firstFrame = 0; ///< 0-based
    int lastFrame = 0;
    std::string speaker; ///< may be empty
    std::string text;

    bool operator==(const CSpokenLine&) const = default;
};

/// The text of dialogue along the frames: lines in the order of their frames, of which no two share one.
class CDialogue {
public:
    static constexpr int mostLines = 1999;
    static constexpr std::size_t mostText = 255; ///< bytes of a line's text, and of its speaker's name
    static constexpr int mostFrame = 99999;      ///< that a line may stand at

    const std::vector<CSpokenLine>& Lines() const { return *m_lines; }
    bool IsEmpty() const { return m_lines->empty(); }
    /// The line at a frame; null when none is. Valid until the next change.
    const CSpokenLine* At(int frame) const;
    /// Puts a line over its frames; lines that reach into them end before or begin behind. False, and nothing
    /// changed, when its frames or texts are none (an empty text, say) or there are too many lines.
    [[nodiscard]] bool Put(CSpokenLine line);
    /// Leaves the frames without text. A line that stands on both sides keeps the longer one, the first of equals.
    void Clear(int firstFrame, int lastFrame);
    /// Puts the lines one after the other; those that cannot be put are left out.
    void Set(std::vector<CSpokenLine> lines);

    /// `count` frames come before frame `at`: a line that goes on across them is longer by them.
    void InsertFrames(int at, int count);
    /// The frames from `at` on go, and with them the lines that have no other.
    void DeleteFrames(int at, int count);

    bool operator==(const CDialogue&) const = default;

private:
    CShared<std::vector<CSpokenLine>> m_lines;
};

} // namespace velmor
