#include "image/transform/Transforms.h"

#include "image/paint/MaskWords.h"
#include "platform/process/Parallel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <new>
#include <numbers>
#include <vector>

namespace velmor {

namespace {

constexpr int smallestSide = 2;
constexpr int largestSide = 32767;
constexpr Channel channels[] = {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha};

/// An image of the same kind and file as `image`, white and without lines.
CStatus CreateLike(const CCelImg& image, double width, double height, CCelImg& result) {
    // A test that fails for what is not a number, too.
    const auto isSide = [](double side) { return side >= smallestSide && side <= largestSide; };
    if (!isSide(width) || !isSide(height))
        return CStatus::Failure("Invalid cel dimensions");
    const int columns = static_cast<int>(width);
    const int rows = static_cast<int>(height);
    return image.LineMask().empty() ? result.CreatePicture(columns, rows, image.FilePath())
                                    : result.CreateCel(columns, rows, image.FilePath());
}

/// Turns a plane by a quarter counter-clockwise: pixel (x, y) goes to (height - 1 - y, x). In square blocks, so
/// that the rows read and written stay in the cache.
void TurnPlane(const std::uint8_t* source, std::uint8_t* target, int width, int height) {
    constexpr int block = 32;
    for (int blockY = 0; blockY < height; blockY += block)
        for (int blockX = 0; blockX < width; blockX += block)
            for (int x = blockX; x < std::min(blockX + block, width); ++x) {
                std::uint8_t* const row = target + static_cast<std::ptrdiff_t>(x) * height;
                const std::uint8_t* const column = source + x;
                for (int y = blockY; y < std::min(blockY + block, height); ++y)
                    row[height - 1 - y] = column[static_cast<std::ptrdiff_t>(y) * width];
            }
}

CStatus TurnByQuarter(CCelImg& image) {
    CCelImg turned;
    if (CStatus created = CreateLike(image, image.Height(), image.Width(), turned); !created)
        return created;
    for (const Channel channel : channels)
        TurnPlane(image.PlaneOf(channel).data(), turned.PlaneOf(channel).data(), image.Width(), image.Height());
    if (!image.LineMask().empty()) {
        std::vector<MaskWord> lines(MaskWordsOf(image.Width()));
        for (int y = 0; y < image.Height(); ++y) {
            LoadMaskRow(image, y, lines);
            for (std::size_t i = 0; i < lines.size(); ++i)
                ForEachBit(lines[i], static_cast<int>(i) * maskWordBits,
                           [&](int x) { turned.SetLine(image.Height() - 1 - y, x, true); });
        }
    }
    image = std::move(turned);
    return {};
}

CStatus TurnByHalf(CCelImg& image) {
    if (CStatus flipped = FlipX(image); !flipped)
        return flipped;
    return FlipY(image);
}

/// A turn by any angle, from a place in the turned image back to one in the source; a place of each, the middle
/// unless said otherwise, is the same.
class CTurn {
public:
    CTurn(const CCelImg& image, double degrees)
        : m_source(image),
          m_cosine(std::cos(degrees * std::numbers::pi / 180)),
          m_sine(std::sin(degrees * std::numbers::pi / 180)),
          m_lastX(image.Width() - 1),
          m_lastY(image.Height() - 1),
          m_fromX(m_lastX / 2),
          m_fromY(m_lastY / 2) {}

    void TurnAroundMiddle(const CCelImg& turned) {
        m_toX = (turned.Width() - 1) / 2.0;
        m_toY = (turned.Height() - 1) / 2.0;
    }
    void TurnAround(const CTurnAndMove& movement) {
        m_fromX = movement.fromX;
        m_fromY = movement.fromY;
        m_toX = movement.toX;
        m_toY = movement.toY;
    }

    /// The bounding box of the turned corner pixels.
    double Width() const { return std::round(std::abs(m_lastX * m_cosine) + std::abs(m_lastY * m_sine)) + 1; }
    double Height() const { return std::round(std::abs(m_lastX * m_sine) + std::abs(m_lastY * m_cosine)) + 1; }

    void SampleRow(CCelImg& turned, int y) const {
        const double dy = y - m_toY;
        for (int x = 0; x < turned.Width(); ++x) {
            const double dx = x - m_toX;
            const double sourceX = m_fromX + dx * m_cosine + dy * m_sine;
            const double sourceY = m_fromY - dx * m_sine + dy * m_cosine;
            if (sourceX >= -0.5 && sourceY >= -0.5 && sourceX < m_lastX + 0.5 && sourceY < m_lastY + 0.5)
                SamplePixel(turned, x, y, sourceX, sourceY);
            else if (turned.LineMask().empty())
                turned.PlaneOf(Channel::Alpha)[turned.IndexOf(x, y)] = 0;
        }
    }

private:
    /// Between the four pixels around a place within half a pixel of the source; the outermost ones go on beyond.
    void SamplePixel(CCelImg& turned, int x, int y, double sourceX, double sourceY) const {
        const double placeX = std::clamp(sourceX, 0.0, m_lastX);
        const double placeY = std::clamp(sourceY, 0.0, m_lastY);
        const int left = static_cast<int>(placeX);
        const int low = static_cast<int>(placeY);
        const double fractionX = placeX - left;
        const double fractionY = placeY - low;
        const std::size_t corner = m_source.IndexOf(left, low);
        const std::size_t right = fractionX > 0 ? 1 : 0;
        const std::size_t up = fractionY > 0 ? static_cast<std::size_t>(m_source.Width()) : 0;
        const std::size_t index = turned.IndexOf(x, y);
        for (const Channel channel : channels) {
            const std::uint8_t* const at = m_source.PlaneOf(channel).data() + corner;
            const double below = at[0] + (at[right] - at[0]) * fractionX;
            const double above = at[up] + (at[up + right] - at[up]) * fractionX;
            turned.PlaneOf(channel)[index] =
                static_cast<std::uint8_t>(static_cast<int>(below + (above - below) * fractionY + 0.5));
        }
        if (!turned.LineMask().empty() &&
            m_source.IsLine(static_cast<int>(placeX + 0.5), static_cast<int>(placeY + 0.5)))
            turned.SetLine(x, y, true);
    }

    const CCelImg& m_source;
    double m_cosine;
    double m_sine;
    double m_lastX;
    double m_lastY;
    double m_fromX; ///< in the source
    double m_fromY;
    double m_toX = 0; ///< the same place in the turned image
    double m_toY = 0;
};

void SampleRows(const CTurn& turn, CCelImg& turned) {
    ParallelFor(turned.Height(), 16, [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            turn.SampleRow(turned, y);
    });
}

CStatus TurnFreely(CCelImg& image, double degrees) {
    CTurn turn(image, degrees);
    CCelImg turned;
    if (CStatus created = CreateLike(image, turn.Width(), turn.Height(), turned); !created)
        return created;
    turn.TurnAroundMiddle(turned);
    SampleRows(turn, turned);
    image = std::move(turned);
    return {};
}

CStatus TurnByQuarters(CCelImg& image, int quarters) {
    switch (quarters) {
    case 1:
        return TurnByQuarter(image);
    case 2:
        return TurnByHalf(image);
    case 3: {
        const CStatus turned = TurnByQuarter(image);
        return turned ? TurnByHalf(image) : turned;
    }
    default:
        return {};
    }
}

} // namespace

CStatus Rotate(CCelImg& image, double degrees) try {
    // The eraser's message, shared.
    if (image.GetLoadState() == LoadState::Nothing)
        return CStatus::Failure("Internal Error : cel/picture is not loaded in Eraser");
    const double turn = std::fmod(std::fmod(degrees, 360.0) + 360.0, 360.0);
    const double quarters = turn / 90;
    const bool isExact = quarters == std::floor(quarters);
    CStatus turned = isExact ? TurnByQuarters(image, static_cast<int>(quarters)) : TurnFreely(image, turn);
    if (turned)
        image.SetModified(true);
    return turned;
} catch (const std::bad_alloc&) {
    return CStatus::Failure("Unable to allocate memory for cel!");
}

CStatus TurnAndMove(CCelImg& image, const CTurnAndMove& movement) try {
    if (image.GetLoadState() == LoadState::Nothing)
        return CStatus::Failure("Internal Error : cel/picture is not loaded in TurnAndMove");
    const bool isFinite = std::isfinite(movement.degrees) && std::isfinite(movement.fromX + movement.fromY) &&
                          std::isfinite(movement.toX + movement.toY);
    if (!isFinite)
        return CStatus::Failure("Internal Error : no place in TurnAndMove");
    CCelImg turned;
    if (CStatus created = CreateLike(image, movement.size.width, movement.size.height, turned); !created)
        return created;
    CTurn turn(image, movement.degrees);
    turn.TurnAround(movement);
    SampleRows(turn, turned);
    image = std::move(turned);
    image.SetModified(true);
    return {};
} catch (const std::bad_alloc&) {
    return CStatus::Failure("Unable to allocate memory for cel!");
}

} // namespace velmor
