#include "image/Palette.h"
#include "platform/Archive.h"

#include <algorithm>
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
        if (count > 0 && static_cast<std::size_t>(count) > reader.Remaining() / leastEntrySize)
            return Corrupted();
        std::vector<CNamedColor> colors;
        colors.reserve(static_cast<std::size_t>(std::max(count, 0)));
        for (int i = 0; i < count && !reader.Failed(); ++i)
            colors.push_back(ReadEntry(reader));
        if (reader.Failed())
            return Corrupted();
        palette = CPalette(std::move(colors));
        return {};
    } catch (const std::exception&) {
        return Corrupted();
    }
}

} // namespace velmor
