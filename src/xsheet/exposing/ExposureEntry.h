#pragma once

#include <string>

namespace velmor {

/// What is typed into a cell will do.
struct CTypedExposure {
    enum class Kind {
        Nothing,
        Drawing,  ///< expose the drawing of a number
        Empty,    ///< expose nothing
        Hold,     ///< hold what is above
        Lengthen, ///< hold the drawing under the cursor for more frames
        SetLength ///< hold it for as many frames
    };

    Kind kind = Kind::Nothing;
    std::string number; ///< of the drawing, as typed
    int frames = 0;     ///< 0 when none were typed

    bool operator==(const CTypedExposure&) const = default;
};

/// A key as far as it means something to typing.
struct CEntryKey {
    enum class Kind { Digit, ControlDigit, Dot, Minus, Plus, Backspace, Enter, Escape, Back, On };

    Kind kind = Kind::Digit;
    int digit = 0; ///< 0 to 9
};

/// The line that is typed into a cell of the sheet: a number is a drawing; "." empties, "-" holds, "+" holds
/// longer, each for as many frames as the number says that may follow; digits with Ctrl say how long an exposure
/// is. Nothing happens before Enter.
class CExposureEntry {
public:
    enum class Outcome {
        NotTaken, ///< the key is for somebody else
        Taken,    ///< the line, or what is chosen, may have changed
        Entered,  ///< the line stands until it is cleared
        GivenUp   ///< the line is empty again
    };

    /// What Press() would take, so that no command gets the key.
    bool Takes(CEntryKey key) const;
    Outcome Press(CEntryKey key);
    void Clear() { *this = CExposureEntry(); }

    bool IsOpen() const { return m_kind != CTypedExposure::Kind::Nothing; }
    /// As it is shown: "12", ".", "-3", "+2", "=4".
    std::string Text() const;
    CTypedExposure Typed() const;
    /// Which of the drawings that the number can stand for was chosen with the arrow keys, the first one unless it
    /// was changed; below 0 counts from the last one.
    int Choice() const { return m_choice; }

private:
    void Begin(CEntryKey key);
    void AddDigit(int digit);
    void GoOn(CEntryKey key);

    CTypedExposure::Kind m_kind = CTypedExposure::Kind::Nothing;
    std::string m_digits;
    int m_choice = 0;
};

} // namespace velmor
