#include "image/Palette.h"
#include "platform/files/Archive.h"

#include <exception>
#include <optional>
#include <string_view>
#include <utility>

namespace velmor {

namespace {

constexpr std::string_view signature = "VELMORLTCOLORDATAFILEV1.0";
/// Four colour bytes and an empty name.
constexpr std::size_t leastEntrySize = 5;

CStatus Corrupted() {
    return CStatus::Failure("Invalid or corrupted color data file");
}

CNamedColor ReadEntry(CArchiveReader& reader) {
    CNamedColor entry;
    entry.color.red = reader.ReadByte();
    entry.color.green = reader.ReadByte();
    entry.color.blue = reader.ReadByte();
    entry.color.alpha = reader.ReadByte();
    entry.name = reader.ReadString();
    return entry;
}

// As many of `count` entries as are there.
std::vector<CNamedColor> ReadEntries(CArchiveReader& reader, int count) {
    std::vector<CNamedColor> colors;
    while (std::ssize(colors) < count && reader.Remaining() >= leastEntrySize) {
        CNamedColor entry = ReadEntry(reader);
        if (reader.Failed())
            break;
        colors.push_back(std::move(entry));
    }
    return colors;
}

} // namespace

CStatus SavePalette(const Path& path, const CPalette& palette) {
    try {
        CArchiveWriter writer;
        writer.WriteString(signature);
        writer.WriteInt(palette.Count());
        for (int i = 0; i < palette.Count(); ++i) {
            const auto& [color, name] = palette.At(i);
            for (const std::uint8_t value : {color.red, color.green, color.blue, color.alpha})
                writer.WriteByte(value);
            writer.WriteString(name);
        }
        if (WriteFileAtomically(path, writer.Bytes()))
            return {};
    } catch (const std::exception&) {
        // No memory for the file: reported like any other save that does not succeed.
    }
    return CStatus::Failure("Problem opening the color data file for writing");
}

CStatus LoadPalette(const Path& path, CPalette& palette) {
    const std::optional<CFileBytes> file = ReadWholeFile(path);
    if (!file)
        return CStatus::Failure("Problem opening the color data file for reading");
    try {
        CArchiveReader reader(file->Span());
        if (reader.ReadString() != signature)
            return Corrupted();
        const int count = reader.ReadInt();
        std::vector<CNamedColor> colors = ReadEntries(reader, count);
        if (std::ssize(colors) < count || reader.Failed())
            return Corrupted();
        palette = CPalette(std::move(colors));
        return {};
    } catch (const std::exception&) {
        return Corrupted();
    }
}

CPalette SalvagePalette(const Path& path) {
    const std::optional<CFileBytes> file = ReadWholeFile(path);
    if (!file)
        return CPalette::Default();
    CArchiveReader reader(file->Span());
    if (reader.ReadString() != signature)
        return CPalette::Default();
    std::vector<CNamedColor> colors = ReadEntries(reader, reader.ReadInt());
    return colors.empty() ? CPalette::Default() : CPalette(std::move(colors));
}

} // namespace velmor
