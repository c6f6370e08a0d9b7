#include "image/PaletteNames.h"

#include "platform/files/TextEncoding.h"

#include <charconv>
#include <cstdio>
#include <exception>
#include <optional>
#include <string_view>

namespace velmor {

namespace {

constexpr std::string_view signature = "VELMOR COLOR NAMES 1";
constexpr std::uint64_t mostBytes = 1 << 24;

std::string AsInFile(const std::string& name) {
    return Windows1252ToUtf8(Utf8ToWindows1252(name));
}

std::uint32_t CodeOf(CColor color) {
    return static_cast<std::uint32_t>(color.red) << 24 | static_cast<std::uint32_t>(color.green) << 16 |
           static_cast<std::uint32_t>(color.blue) << 8 | color.alpha;
}

// One line for each entry, so that line breaks in names are escaped.
std::string Escaped(std::string_view name) {
    std::string text;
    for (const char letter : name)
        if (letter == '\\')
            text += "\\\\";
        else if (letter == '\n')
            text += "\\n";
        else
            text += letter;
    return text;
}

std::optional<std::string> Unescaped(std::string_view text) {
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            name += text[i];
            continue;
        }
        if (++i == text.size() || (text[i] != '\\' && text[i] != 'n'))
            return std::nullopt;
        name += text[i] == 'n' ? '\n' : '\\';
    }
    return name;
}

struct CNameLine {
    int index = 0;
    std::uint32_t code = 0;
    std::string name;
};

// "12 ff8000ff Fuchs".
std::optional<CNameLine> ReadLine(std::string_view line) {
    CNameLine read;
    const char* const end = line.data() + line.size();
    const auto index = std::from_chars(line.data(), end, read.index);
    if (index.ec != std::errc() || index.ptr == end || *index.ptr != ' ')
        return std::nullopt;
    const auto code = std::from_chars(index.ptr + 1, end, read.code, 16);
    if (code.ec != std::errc() || code.ptr != index.ptr + 9 || code.ptr == end || *code.ptr != ' ')
        return std::nullopt;
    const std::optional<std::string> name =
        Unescaped({code.ptr + 1, static_cast<std::size_t>(end - (code.ptr + 1))});
    if (!name)
        return std::nullopt;
    read.name = *name;
    return read;
}

std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

CStatus Damaged() {
    return CStatus::Failure("Invalid or corrupted color names file");
}

void Give(CPalette& palette, const CNameLine& line) {
    if (!palette.Contains(line.index))
        return;
    const CNamedColor& entry = palette.At(line.index);
    if (CodeOf(entry.color) == line.code && entry.name == AsInFile(line.name))
        palette.Set(line.index, {entry.color, line.name});
}

} // namespace

Path PaletteNamesFile(const Path& paletteFile) {
    Path file = paletteFile;
    file += ".names";
    return file;
}

CStatus SavePaletteNames(const Path& file, const CPalette& palette) {
    CStatus failure = CStatus::Failure("Problem writing the color names file");
    try {
        std::string text(signature);
        text += '\n';
        const std::size_t head = text.size();
        for (int i = 0; i < palette.Count(); ++i) {
            const auto& [color, name] = palette.At(i);
            if (name == AsInFile(name))
                continue;
            char code[9];
            std::snprintf(code, sizeof code, "%08x", CodeOf(color));
            text += std::to_string(i) + ' ' + code + ' ' + Escaped(name) + '\n';
        }
        if (text.size() == head)
            return !FileExists(file) || RemoveFile(file) ? CStatus() : failure;
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
        return WriteFileAtomically(file, {bytes, text.size()}) ? CStatus() : failure;
    } catch (const std::exception&) {
        return failure;
    }
}

CStatus LoadPaletteNames(const Path& file, CPalette& palette) {
    if (!FileExists(file))
        return {};
    const std::optional<CFileBytes> bytes = ReadWholeFile(file, mostBytes);
    if (!bytes)
        return Damaged();
    try {
        std::string_view text(reinterpret_cast<const char*>(bytes->Span().data()), bytes->Span().size());
        if (TakeLine(text) != signature)
            return Damaged();
        std::vector<CNameLine> lines;
        while (!text.empty()) {
            std::optional<CNameLine> line = ReadLine(TakeLine(text));
            if (!line)
                return Damaged();
            lines.push_back(std::move(*line));
        }
        for (const CNameLine& line : lines)
            Give(palette, line);
        return {};
    } catch (const std::exception&) {
        return Damaged();
    }
}

} // namespace velmor
