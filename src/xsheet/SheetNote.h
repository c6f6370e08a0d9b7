#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace velmor {

/// What a drawing is for the movement, as animators write it into their sheets.
enum class SheetMark : std::uint8_t {
    None,
    Key,
    Breakdown,
    Inbetween,
    StopHold ///< the movement stands still from here on
};
inline constexpr SheetMark lastMark = SheetMark::StopHold;

enum class NoteColor : std::uint8_t { None, Red, Orange, Yellow, Green, Blue, Violet };
inline constexpr NoteColor lastNoteColor = NoteColor::Violet;

/// What is noted at a cell or a frame. It is seen in the sheet, and in no picture.
struct CSheetNote {
    static constexpr std::size_t mostText = 1000; ///< bytes of a comment

    SheetMark mark = SheetMark::None;
    NoteColor color = NoteColor::None;
    std::string comment; ///< may have line breaks

    bool IsEmpty() const { return *this == CSheetNote(); }
    bool operator==(const CSheetNote&) const = default;
};

/// A comment as it can be kept: not longer than `most` bytes, whole letters only, and none when it is no text.
std::string NoteText(std::string text, std::size_t most = CSheetNote::mostText);

} // namespace velmor
