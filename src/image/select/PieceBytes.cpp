#include "image/select/PieceBytes.h"

#include "image/RunLength.h"

#include <algorithm>
#include <string_view>

namespace velmor {

namespace {

constexpr std::string_view signature = "VELMORPIECE1.0";
constexpr int mostSide = 32767; // that an image may have
constexpr std::size_t mostPixels = std::size_t{1} << 28;
constexpr int farthest = 1 << 20; // that a place may lie from the image
constexpr std::size_t planesOfPiece = 5;

void PutNumber(std::int32_t value, std::vector<std::uint8_t>& bytes) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> shift));
}

void PutPlane(std::span<const std::uint8_t> plane, std::vector<std::uint8_t>& bytes) {
    std::vector<CRun> runs;
    EncodeRuns(plane, runs);
    for (const CRun& run : runs)
        bytes.insert(bytes.end(), {run.value, run.count});
}

/// Takes what stands in front of the bytes that are left.
class CTaker {
public:
    explicit CTaker(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    bool TakeSignature() {
        if (m_bytes.size() < signature.size() ||
            !std::equal(signature.begin(), signature.end(), m_bytes.begin(),
                        [](char letter, std::uint8_t byte) { return static_cast<std::uint8_t>(letter) == byte; }))
            return false;
        m_bytes = m_bytes.subspan(signature.size());
        return true;
    }
    /// A number from least to most; nothing when there is none.
    std::optional<int> TakeNumber(int least, int most) {
        if (m_bytes.size() < 4)
            return std::nullopt;
        std::uint32_t value = 0;
        for (int byte = 3; byte >= 0; --byte)
            value = value << 8 | m_bytes[static_cast<std::size_t>(byte)];
        m_bytes = m_bytes.subspan(4);
        const auto number = static_cast<std::int32_t>(value);
        return number >= least && number <= most ? std::optional<int>(number) : std::nullopt;
    }
    bool TakePlane(std::span<std::uint8_t> plane) { return DecodeRuns(m_bytes, plane); }
    std::size_t Left() const { return m_bytes.size(); }

private:
    std::span<const std::uint8_t> m_bytes;
};

std::optional<CRect> TakePlace(CTaker& taker) {
    const auto x = taker.TakeNumber(-farthest, farthest);
    const auto y = taker.TakeNumber(-farthest, farthest);
    const auto width = taker.TakeNumber(1, mostSide);
    const auto height = taker.TakeNumber(1, mostSide);
    if (!x || !y || !width || !height)
        return std::nullopt;
    const std::size_t pixels = static_cast<std::size_t>(*width) * static_cast<std::size_t>(*height);
    if (pixels > mostPixels || taker.Left() < planesOfPiece * LeastRunBytes(pixels))
        return std::nullopt; // before memory is taken for them
    return CRect{*x, *y, *x + *width, *y + *height};
}

} // namespace

std::vector<std::uint8_t> BytesOf(const CPiece& piece) {
    std::vector<std::uint8_t> bytes(signature.begin(), signature.end());
    PutNumber(static_cast<int>(piece.what), bytes);
    PutNumber(piece.isPicture ? 1 : 0, bytes);
    for (const int value : {piece.place.x, piece.place.y, piece.Width(), piece.Height()})
        PutNumber(value, bytes);
    std::vector<std::uint8_t> pixels(piece.pixels.size());
    std::ranges::transform(piece.pixels, pixels.begin(),
                           [](PiecePixel pixel) { return static_cast<std::uint8_t>(pixel); });
    PutPlane(pixels, bytes);
    for (const CPlane& plane : piece.planes)
        PutPlane(plane.Span(), bytes);
    return bytes;
}

std::optional<CPiece> ReadPiece(std::span<const std::uint8_t> bytes) {
    CTaker taker(bytes);
    if (!taker.TakeSignature())
        return std::nullopt;
    const auto what = taker.TakeNumber(0, 2);
    const auto isPicture = taker.TakeNumber(0, 1);
    const auto place = what && isPicture ? TakePlace(taker) : std::nullopt;
    if (!place)
        return std::nullopt;
    CPiece piece(*place);
    piece.what = static_cast<SelectWhat>(*what);
    piece.isPicture = *isPicture != 0;
    std::vector<std::uint8_t> pixels(piece.pixels.size());
    const std::uint8_t most = static_cast<std::uint8_t>(piece.isPicture ? PiecePixel::Paint : PiecePixel::Line);
    if (!taker.TakePlane(pixels) ||
        std::ranges::any_of(pixels, [most](std::uint8_t pixel) { return pixel > most; }))
        return std::nullopt;
    std::ranges::transform(pixels, piece.pixels.begin(),
                           [](std::uint8_t pixel) { return static_cast<PiecePixel>(pixel); });
    for (CPlane& plane : piece.planes)
        if (!taker.TakePlane(plane.Span()))
            return std::nullopt;
    return taker.Left() == 0 ? std::optional(std::move(piece)) : std::nullopt;
}

CPiece PieceOfPixels(std::span<const std::uint8_t> rgba, CSize size, CPoint lowerLeft) {
    if (size.width < 1 || size.height < 1 || size.width > mostSide || size.height > mostSide)
        return {};
    const std::size_t pixels = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    if (pixels > mostPixels || rgba.size() != pixels * 4)
        return {};
    CPiece piece({lowerLeft.x, lowerLeft.y, lowerLeft.x + size.width, lowerLeft.y + size.height});
    piece.isPicture = true;
    const std::uint8_t* byte = rgba.data();
    for (int y = size.height - 1; y >= 0; --y)
        for (int x = 0; x < size.width; ++x, byte += 4)
            if (byte[3] != 0)
                piece.Set(x, y, PiecePixel::Paint, {byte[2], byte[1], byte[0], byte[3]});
    return piece;
}

std::vector<std::uint8_t> PixelsOf(const CPiece& piece) {
    std::vector<std::uint8_t> rgba(piece.pixels.size() * 4);
    std::uint8_t* byte = rgba.data();
    for (int y = piece.Height() - 1; y >= 0; --y)
        for (int x = 0; x < piece.Width(); ++x, byte += 4) {
            if (piece.At(x, y) == PiecePixel::Nothing)
                continue;
            const CColor color = piece.ColorAt(x, y);
            byte[0] = color.red;
            byte[1] = color.green;
            byte[2] = color.blue;
            byte[3] = color.alpha;
        }
    return rgba;
}

} // namespace velmor
