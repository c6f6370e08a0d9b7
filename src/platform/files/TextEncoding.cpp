#include "platform/files/TextEncoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace velmor {

namespace {

// Unicode code points of the bytes 80 to 9F (Unicode Consortium, mapping table CP1252).
constexpr std::array<char32_t, 32> upperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t CodePointOf(std::uint8_t byte) {
    return byte >= 0x80 && byte < 0xA0 ? upperControls[byte - 0x80U] : char32_t{byte};
}

char ByteOf(char32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF))
        return static_cast<char>(codePoint);
    const auto found = std::find(upperControls.begin(), upperControls.end(), codePoint);
    return found == upperControls.end() ? '?' : static_cast<char>(0x80 + (found - upperControls.begin()));
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xC0 | codePoint >> 6);
        text += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | codePoint >> 12);
        text += static_cast<char>(0x80 | (codePoint >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

// Bytes of the character that starts with `lead`, 0 when it cannot start one.
std::size_t LengthOf(std::uint8_t lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

// Whether `codePoint` is a character and is not written in more bytes than it needs.
bool IsWellFormed(char32_t codePoint, std::size_t length) {
    constexpr std::array<char32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000};
    return codePoint >= least[length] && codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF);
}

// Takes one character off the front of `text`; '?' for a byte that is not valid UTF-8.
char32_t TakeCharacter(std::string_view& text) {
    const auto lead = static_cast<std::uint8_t>(text[0]);
    const std::size_t length = LengthOf(lead);
    const auto isContinuation = [](char c) { return (static_cast<std::uint8_t>(c) & 0xC0) == 0x80; };
    if (length == 0 || length > text.size() ||
        !std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length), isContinuation)) {
        text.remove_prefix(1);
        return U'?';
    }
    char32_t codePoint = length == 1 ? lead : static_cast<char32_t>(lead & (0x7F >> length));
    for (std::size_t i = 1; i < length; ++i)
        codePoint = codePoint << 6 | (static_cast<std::uint8_t>(text[i]) & 0x3FU);
    const bool wellFormed = IsWellFormed(codePoint, length);
    text.remove_prefix(wellFormed ? length : 1);
    return wellFormed ? codePoint : U'?';
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<std::uint8_t>(c) < 0x80; });
}

} // namespace

std::string Windows1252ToUtf8(std::string_view bytes) {
    if (IsAscii(bytes))
        return std::string(bytes);
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes)
        AppendUtf8(text, CodePointOf(static_cast<std::uint8_t>(byte)));
    return text;
}

std::string Utf8ToWindows1252(std::string_view utf8) {
    if (IsAscii(utf8))
        return std::string(utf8);
    std::string bytes;
    bytes.reserve(utf8.size());
    while (!utf8.empty())
        bytes += ByteOf(TakeCharacter(utf8));
    return bytes;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const char first = text.front();
        if (TakeCharacter(text) == U'?' && first != '?')
            return false;
    }
    return true;
}

bool IsStorable(std::string_view utf8) {
    return Windows1252ToUtf8(Utf8ToWindows1252(utf8)) == utf8;
}

} // namespace velmor
