#include "image/import/GimpPalette.h"

#include "platform/files/TextEncoding.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace velmor {

namespace {

constexpr std::string_view head = "GIMP Palette";
constexpr std::string_view opacityMark = "# Opacity ";
constexpr std::uint8_t opaque = 255;

std::string OnOneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char letter) { return letter == '\n' || letter == '\r'; }, ' ');
    return text;
}

std::string Column(std::uint8_t value) {
    const std::string digits = std::to_string(value);
    return std::string(3 - digits.size(), ' ') + digits;
}

std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

std::string_view WithoutBlanksInFront(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::optional<std::uint8_t> TakeByte(std::string_view& text) {
    text = WithoutBlanksInFront(text);
    std::uint8_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

std::string NameOf(std::string_view bytes) {
    return IsUtf8(bytes) ? std::string(bytes) : Windows1252ToUtf8(bytes);
}

// "255 128   0<TAB>Orange".
std::optional<CNamedColor> ReadColor(std::string_view line, std::uint8_t alpha) {
    const std::optional<std::uint8_t> red = TakeByte(line);
    const std::optional<std::uint8_t> green = red ? TakeByte(line) : std::nullopt;
    const std::optional<std::uint8_t> blue = green ? TakeByte(line) : std::nullopt;
    if (!blue || (!line.empty() && line.front() != ' ' && line.front() != '\t'))
        return std::nullopt;
    if (line.starts_with('\t'))
        line.remove_prefix(1); // blanks behind it are the name's
    else
        line = WithoutBlanksInFront(line);
    return CNamedColor{{*blue, *green, *red, alpha}, NameOf(line)};
}

bool IsHeading(std::string_view line) {
    return line.starts_with("Name:") || line.starts_with("Columns:") || WithoutBlanksInFront(line).empty();
}

} // namespace

std::string GimpPaletteText(const CPalette& palette, const std::string& title) {
    std::string text(head);
    text += "\nName: " + OnOneLine(title) + "\nColumns: 0\n#\n";
    for (int i = 0; i < palette.Count(); ++i) {
        const auto& [color, name] = palette.At(i);
        if (color.alpha != opaque)
            text += std::string(opacityMark) + std::to_string(color.alpha) + '\n';
        text += Column(color.red) + ' ' + Column(color.green) + ' ' + Column(color.blue) + '\t' + OnOneLine(name) +
                '\n';
    }
    return text;
}

CStatus ReadGimpPalette(std::span<const std::uint8_t> bytes, CPalette& palette) {
    std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    if (!TakeLine(text).starts_with(head))
        return CStatus::Failure("This is no GIMP palette file");
    std::vector<CNamedColor> colors;
    std::uint8_t alpha = opaque;
    for (int number = 2; !text.empty(); ++number) {
        std::string_view line = TakeLine(text);
        if (line.starts_with(opacityMark)) {
            line.remove_prefix(opacityMark.size());
            alpha = TakeByte(line).value_or(opaque);
        } else if (!line.starts_with('#') && !IsHeading(line)) {
            const std::optional<CNamedColor> color = ReadColor(line, alpha);
            if (!color)
                return CStatus::Failure("Line " + std::to_string(number) + " of the palette file has no color");
            colors.push_back(*color);
            alpha = opaque;
        }
    }
    palette = CPalette(std::move(colors));
    return {};
}

} // namespace velmor
