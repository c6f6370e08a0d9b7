#include "image/CelImg.h"

#include <algorithm>
#include <new>

namespace velmor {

namespace {

constexpr int smallestSide = 2;
constexpr int widthOfNothing = 10;

int Brightness(const CColor& color) {
    return color.red + color.green + color.blue;
}

} // namespace

LoadState CCelImg::GetLoadState() const {
    const bool hasPlanes =
        std::none_of(m_planes.begin(), m_planes.end(), [](const CPlane& plane) { return plane.IsEmpty(); });
    if (m_path.empty() || !hasPlanes)
        return LoadState::Nothing;
    return m_lineMask.IsEmpty() ? LoadState::Picture : LoadState::Cel;
}

CStatus CCelImg::GetWidth(int& value) const {
    const bool loaded = GetLoadState() != LoadState::Nothing;
    value = loaded ? m_width : widthOfNothing;
    return loaded ? CStatus() : CStatus::Failure("Internal error : GetWidth called with no cel image loaded");
}

CStatus CCelImg::GetHeight(int& value) const {
    const bool loaded = GetLoadState() != LoadState::Nothing;
    value = loaded ? m_height : widthOfNothing;
    return loaded ? CStatus() : CStatus::Failure("Internal error : GetHeight called with no cel image loaded");
}

void CCelImg::Clear() {
    if (m_modified)
        static_cast<void>(Save());
    *this = CCelImg{};
}

CStatus CCelImg::Allocate(int width, int height, LoadState kind, const Path& path) {
    Path kept = path; // which may be this image's own
    Clear();
    if (width < smallestSide || height < smallestSide)
        return CStatus::Failure("Invalid cel dimensions");
    try {
        const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        for (CPlane& plane : m_planes)
            plane = CPlane(pixels);
        if (kind == LoadState::Cel) {
            m_strideBits = StrideBitsOf(width);
            m_lineMask = CPlane(static_cast<std::size_t>(height) * static_cast<std::size_t>(m_strideBits / 8));
        }
    } catch (const std::exception&) {
        *this = CCelImg{};
        return CStatus::Failure("Unable to allocate memory for cel!");
    }
    m_width = width;
    m_height = height;
    m_path = std::move(kept);
    return {};
}

CStatus CCelImg::CreateBlank(int width, int height, LoadState kind, const Path& path) {
    if (CStatus allocated = Allocate(width, height, kind, path); !allocated)
        return allocated;
    for (CPlane& plane : m_planes)
        std::ranges::fill(plane.Span(), std::uint8_t{255});
    std::ranges::fill(m_lineMask.Span(), std::uint8_t{0});
    return {};
}

CStatus CCelImg::CreateCel(int width, int height, const Path& path) {
    return CreateBlank(width, height, LoadState::Cel, path);
}

CStatus CCelImg::CreateCelFromBits(int width, int height, std::span<const std::uint8_t> bits,
                                   const std::array<CColor, 2>& colorTable, const Path& path) {
    if (CStatus created = CreateCel(width, height, path); !created)
        return created;
    const std::size_t count = std::min(bits.size(), m_lineMask.Size());
    std::copy_n(bits.begin(), count, m_lineMask.Span().begin());
    if (Brightness(colorTable[0]) < Brightness(colorTable[1]))
        static_cast<void>(InvertCel());
    return ResetLineColors();
}

CStatus CCelImg::CreatePicture(int width, int height, const Path& path) {
    return CreateBlank(width, height, LoadState::Picture, path);
}

CColor CCelImg::ColorAt(int x, int y) const {
    const std::size_t index = IndexOf(x, y);
    return {PlaneOf(Channel::Blue)[index], PlaneOf(Channel::Green)[index], PlaneOf(Channel::Red)[index],
            PlaneOf(Channel::Alpha)[index]};
}

void CCelImg::SetColorAt(int x, int y, CColor color) {
    const std::size_t index = IndexOf(x, y);
    PlaneOf(Channel::Red)[index] = color.red;
    PlaneOf(Channel::Green)[index] = color.green;
    PlaneOf(Channel::Blue)[index] = color.blue;
    PlaneOf(Channel::Alpha)[index] = color.alpha;
}

void CCelImg::SetLine(int x, int y, bool line) {
    std::uint8_t& byte = m_lineMask.Span()[MaskByteOf(x, y)];
    const int bit = 0x80 >> (x % 8);
    byte = static_cast<std::uint8_t>(line ? byte | bit : byte & ~bit);
}

CStatus CCelImg::InvertCel() {
    if (m_lineMask.IsEmpty())
        return CStatus::Failure("Internal Error : InvertCel called without a cel data");
    for (std::uint8_t& byte : m_lineMask.Span())
        byte = static_cast<std::uint8_t>(~byte);
    return {};
}

CStatus CCelImg::ResetLineColors() {
    if (GetLoadState() != LoadState::Cel)
        return CStatus::Failure("Internal Error : cel image not loaded on ResetLineColors");
    for (int y = 0; y < m_height; ++y)
        for (int x = 0; x < m_width; ++x)
            if (IsLine(x, y)) {
                const std::size_t index = IndexOf(x, y);
                for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue})
                    PlaneOf(channel)[index] = 0;
            }
    return {};
}

} // namespace velmor
