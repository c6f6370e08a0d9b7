#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// One row of a frame while layers are drawn into it: a pixel a word, blue in the low byte, the high byte without
/// meaning. Frames keep 3 bytes a pixel; the row is unpacked from them and packed again.
class CPixelRow {
public:
    /// Pixels behind the last, so that work in groups may run past the end.
    static constexpr int slack = 16;

    explicit CPixelRow(int width) : m_pixels(static_cast<std::size_t>(width + slack)), m_width(width) {}

    int Width() const { return m_width; }
    std::uint32_t* Pixels() { return m_pixels.data(); }

    void Fill(int begin, int end, std::uint32_t pixel);
    /// Copies columns begin to end - 1 from or to a row of width x 3 bytes.
    void Unpack(std::span<const std::uint8_t> bytes, int begin, int end);
    void Pack(std::span<std::uint8_t> bytes, int begin, int end) const;

private:
    std::vector<std::uint32_t> m_pixels;
    int m_width;
};

} // namespace velmor
