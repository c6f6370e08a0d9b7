#pragma once

#include "platform/scanner/Scanner.h"

#include <cstddef>
#include <span>

namespace velmor {

/// How a driver sends an image: all of a pixel together, or one colour a frame.
enum class ScanFrame { Gray, Rgb, Red, Green, Blue };

/// What a driver says of a frame before it sends it. Nothing of it is believed.
struct CScanLayout {
    ScanFrame frame = ScanFrame::Gray;
    int bytesPerLine = 0;
    int width = 0;  ///< in pixels
    int lines = -1; ///< negative when unknown, as for scanners that are drawn over the paper by hand
    int depth = 8;  ///< bits a sample: 1, 8 or 16 (in the machine's byte order)
};

/// Makes a page of the bytes that a driver sends, in pieces of any length. Takes no more memory than the page needs
/// and no page larger than an image can be.
class CScanAssembler {
public:
    /// Grey below `threshold` becomes line in a page of line art.
    CScanAssembler(ScanMode mode, int threshold) : m_threshold(threshold) { m_page.mode = mode; }

    /// False when the layout makes no sense, or does not continue the frames before.
    [[nodiscard]] bool BeginFrame(const CScanLayout& layout);
    /// Bytes after the last line are dropped.
    void Append(std::span<const std::uint8_t> bytes);
    /// Whether the frame has all lines that it can have.
    bool IsFull() const { return m_line >= m_mostLines; }
    /// Of the frame, in percent; 0 when its length is unknown.
    int Progress() const;
    /// The lines that all frames have. Nothing when there is none.
    std::optional<CScannedPage> Finish();

private:
    void AddLine(std::span<const std::uint8_t> line);
    std::uint8_t Sample(std::span<const std::uint8_t> line, std::size_t x, std::size_t channel) const;
    void StoreLineArt(std::span<const std::uint8_t> line, std::span<std::uint8_t> row) const;
    void StoreColor(std::span<const std::uint8_t> line, std::span<std::uint8_t> row) const;
    std::size_t RowBytes() const;

    int m_threshold;
    CScannedPage m_page;
    CScanLayout m_layout;
    std::vector<std::uint8_t> m_partial; ///< of a line that has not come whole
    int m_frames = 0;
    int m_line = 0;
    int m_mostLines = 0;
    int m_shortest = 0; ///< lines of the shortest frame so far
};

} // namespace velmor
