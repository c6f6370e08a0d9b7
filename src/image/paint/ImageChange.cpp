#include "image/paint/ImageChange.h"

#include "image/paint/PackedBytes.h"
#include "platform/files/Archive.h"
#include "platform/files/ContentHash.h"

#include <utility>

namespace velmor {

namespace {

void Combine(std::span<std::uint8_t> bytes, std::span<const std::uint8_t> difference) {
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] ^= difference[index];
}

} // namespace

CImageChange::CImageChange(const CKeptTiles& before, const CCelImg& after)
    : m_width(after.Width()), m_height(after.Height()), m_hasLines(!after.LineMask().empty()) {
    for (const auto& [place, bytes] : before.All()) {
        std::vector<std::uint8_t> difference = TileBytes(after, TileRect(place, m_width, m_height));
        if (difference == bytes)
            continue;
        const std::uint64_t hashAfter = ContentHash(difference);
        Combine(difference, bytes);
        m_tiles.emplace(place, CTile{ContentHash(bytes), hashAfter, PackBytes(difference)});
    }
}

bool CImageChange::Describes(const CCelImg& image) const {
    return image.Width() == m_width && image.Height() == m_height && !image.LineMask().empty() == m_hasLines;
}

bool CImageChange::Fits(const CCelImg& image, ChangeDirection direction) const {
    if (!Describes(image))
        return false;
    for (const auto& [place, tile] : m_tiles) {
        std::vector<std::uint8_t> bytes = TileBytes(image, TileRect(place, m_width, m_height));
        const bool forward = direction == ChangeDirection::Forward;
        const std::optional<std::vector<std::uint8_t>> difference = UnpackBytes(tile.packed, bytes.size());
        if (!difference || ContentHash(bytes) != (forward ? tile.hashBefore : tile.hashAfter))
            return false;
        Combine(bytes, *difference);
        if (ContentHash(bytes) != (forward ? tile.hashAfter : tile.hashBefore))
            return false; // damaged
    }
    return true;
}

std::optional<CRect> CImageChange::Apply(CCelImg& image, ChangeDirection direction) const {
    if (!Fits(image, direction))
        return std::nullopt;
    for (const auto& [place, tile] : m_tiles) {
        const CRect rect = TileRect(place, m_width, m_height);
        std::size_t size = 0;
        ForEachTileRun(image, rect, [&](std::uint8_t*, int count) { size += static_cast<std::size_t>(count); });
        const std::vector<std::uint8_t> difference =
            UnpackBytes(tile.packed, size).value_or(std::vector<std::uint8_t>(size));
        std::span<const std::uint8_t> rest = difference;
        ForEachTileRun(image, rect, [&](std::uint8_t* run, int count) {
            const auto bytes = static_cast<std::size_t>(count);
            Combine({run, bytes}, rest.first(bytes));
            rest = rest.subspan(bytes);
        });
    }
    image.SetModified(true);
    return Bounds();
}

CRect CImageChange::Bounds() const {
    CRect bounds;
    for (const auto& [place, tile] : m_tiles)
        bounds = Union(bounds, TileRect(place, m_width, m_height));
    return bounds;
}

void CImageChange::Add(const CImageChange& next) {
    for (const auto& [place, tile] : next.m_tiles) {
        const auto [mine, isNew] = m_tiles.try_emplace(place, tile);
        if (isNew)
            continue;
        const CRect rect = TileRect(place, m_width, m_height);
        const int width = rect.endX - rect.x;
        const auto size =
            static_cast<std::size_t>((rect.endY - rect.y) * (width * 4 + (m_hasLines ? (width + 7) / 8 : 0)));
        std::optional<std::vector<std::uint8_t>> both = UnpackBytes(mine->second.packed, size);
        const std::optional<std::vector<std::uint8_t>> later = UnpackBytes(tile.packed, size);
        if (!both || !later)
            continue;
        Combine(*both, *later);
        mine->second.packed = PackBytes(*both);
        mine->second.hashAfter = tile.hashAfter;
    }
    std::erase_if(m_tiles, [](const auto& tile) { return tile.second.hashBefore == tile.second.hashAfter; });
}

void CImageChange::Write(CArchiveWriter& writer) const {
    writer.WriteInt(m_width);
    writer.WriteInt(m_height);
    writer.WriteByte(m_hasLines ? 1 : 0);
    writer.WriteInt(static_cast<std::int32_t>(m_tiles.size()));
    for (const auto& [place, tile] : m_tiles) {
        writer.WriteInt(place.first);
        writer.WriteInt(place.second);
        writer.WriteWord(tile.hashBefore);
        writer.WriteWord(tile.hashAfter);
        writer.WriteBlock(tile.packed);
    }
}

std::optional<CImageChange> CImageChange::Read(CArchiveReader& reader) {
    CImageChange change;
    change.m_width = reader.ReadInt();
    change.m_height = reader.ReadInt();
    change.m_hasLines = reader.ReadByte() != 0;
    const int count = reader.ReadInt();
    for (int index = 0; index < count && !reader.Failed(); ++index) {
        const int column = reader.ReadInt();
        const int row = reader.ReadInt();
        if (column < 0 || column > change.m_width / tileSide || row < 0 || row > change.m_height / tileSide)
            return std::nullopt;
        CTile& tile = change.m_tiles[{column, row}];
        tile.hashBefore = reader.ReadWord();
        tile.hashAfter = reader.ReadWord();
        const auto packed = reader.ReadBlock();
        tile.packed.assign(packed.begin(), packed.end());
    }
    if (reader.Failed())
        return std::nullopt;
    return change;
}

} // namespace velmor
