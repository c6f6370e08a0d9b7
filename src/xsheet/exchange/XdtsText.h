#pragma once

#include <string_view>

namespace velmor::xdts {

// The words of the format.

inline constexpr std::string_view firstLine = "exchangeDigitalTimeSheet Save Data";
inline constexpr int version = 5;

inline constexpr int cellField = 0;
inline constexpr int dialogueField = 3;
inline constexpr int cameraField = 5;

inline constexpr std::string_view noCell = "SYMBOL_NULL_CELL";
inline constexpr std::string_view unchanged = "SYMBOL_HYPHEN";
inline constexpr std::string_view inbetween = "SYMBOL_TICK_1";
inline constexpr std::string_view reverseInbetween = "SYMBOL_TICK_2";
/// The name of the track of dialogue that is spoken, beside one that says which sounds start where.
inline constexpr std::string_view spokenTrack = "Text";

} // namespace velmor::xdts
