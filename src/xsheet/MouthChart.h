#pragma once

#include "platform/Status.h"
#include "xsheet/Dialogue.h"

#include <string>
#include <vector>

namespace velmor {

/// An animator's table of what is spoken: which drawing of a folder is the mouth of a letter, of several letters
/// together, or of a sign.
class CMouthChart {
public:
    /// The word that stands for the mouth where nothing is spoken.
    static constexpr const char* restWord = "rest";

    /// A line for each drawing: what it is the mouth of, with blanks between, "=", the drawing. Large and small
    /// letters are the same. Empty lines, and those that begin with "#", say nothing. Fails with the line that
    /// cannot be read; `chart` is then as it was.
    static CStatus Parse(const std::string& text, CMouthChart& chart);

    /// The drawing at each frame of a line: its sounds one after the other, evenly over its frames, each for `hold`
    /// frames at least. Of more sounds than frames those in the middle of a frame's time show. Empty when the chart
    /// has nothing of the text.
    std::vector<std::string> MouthsOf(const CSpokenLine& line, int hold) const;
    /// The drawing where nothing is spoken; empty when the chart has none.
    const std::string& Rest() const { return m_rest; }

private:
    struct CMouth {
        std::string sound;
        std::string drawing;
    };

    std::vector<std::string> DrawingsOf(const std::string& text) const;

    std::vector<CMouth> m_mouths; ///< the longest sounds first
    std::string m_rest;
};

/// The mouth at each frame from `firstFrame` to `lastFrame`; empty where dialogue and chart say nothing.
std::vector<std::string> MouthsOf(const CDialogue& dialogue, const CMouthChart& chart, int firstFrame,
                                  int lastFrame, int hold);

} // namespace velmor
