#include "views/cel/CelDisplay.h"

#include <QPainter>
#include <QRect>
#include <QRegion>

#include <algorithm>
#include <cstring>

namespace velmor {

namespace {

constexpr QColor surround(RedOf(surroundColor), GreenOf(surroundColor), BlueOf(surroundColor));
constexpr std::uint32_t pixelSize = 3;

// Reads a byte more than the pixel has, which is one of the next pixel: every row has some beyond the image's.
QRgb PixelAt(const std::uint8_t* bytes) {
    QRgb pixel = 0;
    std::memcpy(&pixel, bytes, sizeof pixel);
    return pixel | 0xff000000;
}

} // namespace

CStatus CCelDisplay::Rebuild(const CCelImg& image, const CGridSettings& grid) {
    if (image.GetLoadState() == LoadState::Nothing) {
        m_size = {};
        m_bitmap = {};
        return {};
    }
    CStatus status = CreateBitmap(image, grid, m_bitmap);
    if (status)
        m_size = {image.Width(), image.Height()};
    return status;
}

void CCelDisplay::Update(const CCelImg& image, const CGridSettings& grid, const CRect& changed) {
    UpdateBitmap(image, grid, changed, m_bitmap);
}

const std::uint8_t* CCelDisplay::RowOf(int y) const {
    return m_bitmap.bytes.data() +
           static_cast<std::size_t>(y) * static_cast<std::size_t>(m_bitmap.width) * pixelSize;
}

ColorRef CCelDisplay::ColorAt(CPoint pixel) const {
    const std::uint8_t* const bytes = RowOf(pixel.y) + static_cast<std::size_t>(pixel.x) * pixelSize;
    return MakeColorRef(bytes[2], bytes[1], bytes[0]);
}

void CCelDisplay::Scale(const CViewMapping& mapping, const QRect& part) {
    if (m_scaled.width() < part.width() || m_scaled.height() < part.height())
        m_scaled =
            QImage(std::max({m_scaled.width(), part.width(), mapping.client.width}),
                   std::max({m_scaled.height(), part.height(), mapping.client.height}), QImage::Format_RGB32);
    const CPoint origin = mapping.Origin();
    m_columns.clear();
    for (int x = part.left(); x <= part.right(); ++x)
        m_columns.push_back(static_cast<std::uint32_t>(mapping.zoom.Unscaled(x - origin.x)) * pixelSize);
    const QRgb* lineAbove = nullptr;
    int rowAbove = -1;
    for (int i = 0; i < part.height(); ++i) {
        const int row = m_size.height - 1 - mapping.zoom.Unscaled(part.top() + i - origin.y);
        auto* const line = reinterpret_cast<QRgb*>(m_scaled.scanLine(i));
        if (row == rowAbove)
            std::copy_n(lineAbove, m_columns.size(), line);
        else
            std::transform(m_columns.begin(), m_columns.end(), line,
                           [bytes = RowOf(row)](std::uint32_t column) { return PixelAt(bytes + column); });
        lineAbove = line;
        rowAbove = row;
    }
}

void CCelDisplay::Paint(QPainter& painter, const CViewMapping& mapping, const QRect& exposed) {
    const CPoint origin = mapping.Origin();
    const CSize displayed = mapping.Displayed();
    const QRect image(origin.x, origin.y, displayed.width, displayed.height);
    const QRect bordered = image.adjusted(-1, -1, 1, 1);
    for (const QRect& margin : QRegion(exposed) - bordered)
        painter.fillRect(margin, surround);
    for (const QRect& border : QRegion(exposed & bordered) - image)
        painter.fillRect(border, Qt::black);
    const QRect part = exposed & image;
    if (part.isEmpty())
        return;
    Scale(mapping, part);
    painter.drawImage(part, m_scaled, QRect(QPoint(), part.size()));
}

} // namespace velmor
