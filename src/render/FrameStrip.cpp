#include "render/FrameStrip.h"

#include <algorithm>

namespace velmor {

namespace {

template<class Byte>
std::span<Byte> RowOf(std::span<Byte> bytes, std::size_t row, int width) {
    const std::size_t rowBytes = static_cast<std::size_t>(width) * 3;
    return bytes.subspan(row * rowBytes, rowBytes);
}

} // namespace

CFrameStrip::CFrameStrip(int width) : m_rows(mostRows, CPixelRow(width)), m_cover(width) {}

void CFrameStrip::Reserve(std::size_t layers) {
    for (std::vector<OpenSpans>& open : m_open) {
        open.resize(layers);
        for (OpenSpans& spans : open)
            spans.reserve(m_cover.MostOpenSpans());
    }
}

void CFrameStrip::Begin(int firstRow, int rowCount) {
    m_firstRow = firstRow;
    m_rowCount = rowCount;
}

void CFrameStrip::FillBackground(int columns, std::uint32_t color) {
    for (CPixelRow& row : std::span(m_rows).first(static_cast<std::size_t>(m_rowCount))) {
        const int filled = std::clamp(columns, 0, row.Width());
        row.Fill(0, filled, color);
        row.Fill(filled, row.Width(), 0);
    }
}

void CFrameStrip::Unpack(std::span<const std::uint8_t> bytes) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(m_rowCount); ++i)
        m_rows[i].Unpack(RowOf(bytes, i, m_rows[i].Width()), 0, m_rows[i].Width());
}

void CFrameStrip::Pack(std::span<std::uint8_t> bytes) const {
    for (std::size_t i = 0; i < static_cast<std::size_t>(m_rowCount); ++i)
        m_rows[i].Pack(RowOf(bytes, i, m_rows[i].Width()), 0, m_rows[i].Width());
}

void CFrameStrip::FindOpenSpans(std::span<const CPlacedImage> layers) {
    for (int band = 0; band < BandCount(); ++band) {
        const int firstRow = band * bandRows;
        std::vector<OpenSpans>& open = m_open[static_cast<std::size_t>(band)];
        m_cover.Clear();
        for (std::size_t i = layers.size(); i-- > 0;) {
            m_cover.FindOpenSpans(open[i]);
            if (i > 0)
                layers[i].Cover(m_firstRow + firstRow, std::min(bandRows, m_rowCount - firstRow), m_cover);
        }
    }
}

void CFrameStrip::Draw(std::span<const CPlacedImage> layers) {
    FindOpenSpans(layers);
    for (std::size_t i = 0; i < layers.size(); ++i)
        for (int row = 0; row < m_rowCount; ++row) {
            const OpenSpans& open = m_open[static_cast<std::size_t>(row / bandRows)][i];
            if (!open.empty())
                layers[i].Draw(m_firstRow + row, layers[i].SpansOf(m_firstRow + row), open,
                               m_rows[static_cast<std::size_t>(row)]);
        }
}

} // namespace velmor
