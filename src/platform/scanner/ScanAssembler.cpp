#include "platform/scanner/ScanAssembler.h"

#include <algorithm>
#include <bit>

namespace velmor {

namespace {

constexpr int largestSide = 15000; // of an image
constexpr int mostBytesPerLine = 1 << 20;

bool IsSingleColor(ScanFrame frame) {
    return frame == ScanFrame::Red || frame == ScanFrame::Green || frame == ScanFrame::Blue;
}

int ChannelsOf(ScanFrame frame) {
    return frame == ScanFrame::Rgb ? 3 : 1;
}

// The bytes that a line's pixels take. Colours of one bit come in groups of eight pixels, a byte for each colour.
int LeastBytesPerLine(const CScanLayout& layout) {
    const int samples = layout.depth == 1 ? (layout.width + 7) / 8 : layout.width * (layout.depth / 8);
    return samples * ChannelsOf(layout.frame);
}

// Where a colour stands in a stored pixel.
std::size_t PlaceOf(ScanFrame frame) {
    return frame == ScanFrame::Blue ? 0 : frame == ScanFrame::Green ? 1 : 2;
}

} // namespace

std::size_t CScanAssembler::RowBytes() const {
    const auto width = static_cast<std::size_t>(m_page.width);
    return m_page.mode == ScanMode::LineArt ? (width + 7) / 8 : width * 3;
}

bool CScanAssembler::BeginFrame(const CScanLayout& layout) {
    const bool possible =
        layout.width > 0 && layout.width <= largestSide && layout.lines != 0 && layout.lines <= largestSide &&
        (layout.depth == 1 || layout.depth == 8 || layout.depth == 16) && layout.bytesPerLine <= mostBytesPerLine &&
        layout.bytesPerLine >= LeastBytesPerLine(layout);
    if (!possible)
        return false;
    // The three colours of one page are of one size, and what came whole needs no second frame.
    if (m_frames > 0 && (!IsSingleColor(layout.frame) || !IsSingleColor(m_layout.frame) ||
                         layout.width != m_layout.width || m_frames >= 3))
        return false;
    if (m_frames > 0)
        m_shortest = std::min(m_shortest, m_line);
    else
        m_shortest = largestSide;
    m_layout = layout;
    m_page.width = layout.width;
    m_mostLines = std::min(layout.lines < 0 ? largestSide : layout.lines, m_shortest);
    m_line = 0;
    m_partial.clear();
    ++m_frames;
    return true;
}

void CScanAssembler::Append(std::span<const std::uint8_t> bytes) {
    const auto lineBytes = static_cast<std::size_t>(m_layout.bytesPerLine);
    while (!bytes.empty() && !IsFull()) {
        if (m_partial.empty() && bytes.size() >= lineBytes) {
            AddLine(bytes.first(lineBytes));
            bytes = bytes.subspan(lineBytes);
            continue;
        }
        const std::size_t taken = std::min(bytes.size(), lineBytes - m_partial.size());
        m_partial.insert(m_partial.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(taken));
        bytes = bytes.subspan(taken);
        if (m_partial.size() == lineBytes) {
            AddLine(m_partial);
            m_partial.clear();
        }
    }
}

void CScanAssembler::AddLine(std::span<const std::uint8_t> line) {
    const std::size_t begin = static_cast<std::size_t>(m_line) * RowBytes();
    if (m_page.rows.size() < begin + RowBytes())
        m_page.rows.resize(begin + RowBytes());
    const std::span<std::uint8_t> row = std::span(m_page.rows).subspan(begin, RowBytes());
    if (m_page.mode == ScanMode::LineArt)
        StoreLineArt(line, row);
    else
        StoreColor(line, row);
    ++m_line;
}

std::uint8_t CScanAssembler::Sample(std::span<const std::uint8_t> line, std::size_t x, std::size_t channel) const {
    const auto channels = static_cast<std::size_t>(ChannelsOf(m_layout.frame));
    if (m_layout.depth == 1) {
        const bool set = (line[x / 8 * channels + channel] & 0x80U >> x % 8) != 0;
        // A set bit is black in line art and full light in a colour.
        return set == (m_layout.frame == ScanFrame::Gray) ? 0 : 255;
    }
    if (m_layout.depth == 8)
        return line[x * channels + channel];
    const std::size_t high = std::endian::native == std::endian::little ? 1 : 0;
    return line[(x * channels + channel) * 2 + high];
}

void CScanAssembler::StoreLineArt(std::span<const std::uint8_t> line, std::span<std::uint8_t> row) const {
    const auto width = static_cast<std::size_t>(m_page.width);
    const std::size_t channels = static_cast<std::size_t>(ChannelsOf(m_layout.frame));
    for (std::size_t x = 0; x < width; ++x) {
        int sum = 0;
        for (std::size_t channel = 0; channel < channels; ++channel)
            sum += Sample(line, x, channel);
        // Of the frames of single colours, one that is dark makes a line.
        if (sum < m_threshold * static_cast<int>(channels))
            row[x / 8] = static_cast<std::uint8_t>(row[x / 8] | 0x80U >> x % 8);
    }
}

void CScanAssembler::StoreColor(std::span<const std::uint8_t> line, std::span<std::uint8_t> row) const {
    for (std::size_t x = 0; x < static_cast<std::size_t>(m_page.width); ++x) {
        if (m_layout.frame == ScanFrame::Rgb) {
            for (std::size_t channel = 0; channel < 3; ++channel)
                row[x * 3 + 2 - channel] = Sample(line, x, channel);
        } else if (m_layout.frame == ScanFrame::Gray) {
            std::fill_n(&row[x * 3], 3, Sample(line, x, 0));
        } else {
            row[x * 3 + PlaceOf(m_layout.frame)] = Sample(line, x, 0);
        }
    }
}

int CScanAssembler::Progress() const {
    return m_layout.lines > 0 ? m_line * 100 / m_layout.lines : 0;
}

std::optional<CScannedPage> CScanAssembler::Finish() {
    m_page.height = std::min(m_line, m_shortest);
    if (m_frames == 0 || m_page.height == 0)
        return std::nullopt;
    m_page.rows.resize(RowBytes() * static_cast<std::size_t>(m_page.height));
    return std::move(m_page);
}

} // namespace velmor
