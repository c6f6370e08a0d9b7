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

} // namespace velmor::xdts
