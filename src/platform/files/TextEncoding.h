#pragma once

#include <string>
#include <string_view>

namespace velmor {

// Text is UTF-8 in memory and Windows-1252, one byte a character, in the files. The five byte values that
// Windows-1252 leaves undefined (81, 8D, 8F, 90, 9D) stand for the control characters of the same number, so every
// byte string survives the way there and back.

std::string Windows1252ToUtf8(std::string_view bytes);

/// A character that does not exist in Windows-1252, and every byte that is not valid UTF-8, becomes '?'.
std::string Utf8ToWindows1252(std::string_view utf8);

bool IsUtf8(std::string_view text);

/// Whether a text comes back from a file as it was written.
bool IsStorable(std::string_view utf8);

} // namespace velmor
