#include "image/render/PixelRow.h"

#include "image/render/PixelPacking.h"

#include <algorithm>

namespace velmor {

namespace {

template<class Byte>
std::span<Byte> Columns(std::span<Byte> bytes, int begin, int end) {
    return bytes.subspan(static_cast<std::size_t>(begin) * 3, static_cast<std::size_t>(end - begin) * 3);
}

} // namespace

void CPixelRow::Fill(int begin, int end, std::uint32_t pixel) {
    std::fill(m_pixels.begin() + begin, m_pixels.begin() + end, pixel);
}

void CPixelRow::Unpack(std::span<const std::uint8_t> bytes, int begin, int end) {
    UnpackPixels(Columns(bytes, begin, end), m_pixels.data() + begin);
}

void CPixelRow::Pack(std::span<std::uint8_t> bytes, int begin, int end) const {
    PackPixels(m_pixels.data() + begin, Columns(bytes, begin, end));
}

} // namespace velmor
