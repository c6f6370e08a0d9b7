#include "views/cel/CelDisplay.h"

#include <QPainter>
#include <QPolygonF>
#include <QRect>
#include <QRegion>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <utility>

namespace velmor {

namespace {

constexpr QColor surround(RedOf(surroundColor), GreenOf(surroundColor), BlueOf(surroundColor));
constexpr std::uint32_t pixelSize = 3;
constexpr double crispFactor = 2; ///< from here on pixels are large enough to be seen as such

// Reads a byte more than the pixel has, which is one of the next pixel: every row has some beyond the image's.
QRgb PixelAt(const std::uint8_t* bytes) {
    QRgb pixel = 0;
    std::memcpy(&pixel, bytes, sizeof pixel);
    return pixel | 0xff000000;
}

constexpr int farColumn = 1 << 24; ///< beside every view

struct CColumns {
    int first = 0;
    int end = 0;
};

// The columns n from which start + n * step is at least 0 and less than length.
CColumns ColumnsInside(double start, double step, int length) {
    constexpr double still = 1e-9; // what turning by a quarter leaves
    if (std::abs(step) < still)
        return start >= 0 && start < length ? CColumns{-farColumn, farColumn} : CColumns{};
    const double a = -start / step;
    const double b = (length - start) / step;
    const auto bound = [](double column) {
        return static_cast<int>(std::ceil(std::clamp<double>(column, -farColumn, farColumn)));
    };
    return {bound(std::min(a, b)), bound(std::max(a, b))};
}

CColumns Meet(const CColumns& a, const CColumns& b) {
    const int first = std::max(a.first, b.first);
    return {first, std::max(first, std::min(a.end, b.end))};
}

void DrawBorder(QPainter& painter, const CViewMapping& mapping) {
    const auto corner = [&mapping](int x, int y) {
        const CRealPoint at = mapping.ToClient(CRealPoint{static_cast<double>(x), static_cast<double>(y)});
        return QPointF(at.x, at.y);
    };
    const CSize size = mapping.image;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::black);
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(
        QPolygonF({corner(0, 0), corner(size.width, 0), corner(size.width, size.height), corner(0, size.height)}));
    painter.restore();
}

} // namespace

CStatus CCelDisplay::Rebuild(const CCelImg& image, const CGridSettings& grid, const CSkinSheet& skins) {
    if (image.GetLoadState() == LoadState::Nothing) {
        m_size = {};
        m_bitmap = {};
        m_pyramid.Clear();
        return {};
    }
    CStatus status = CreateBitmap(image, grid, m_bitmap, skins);
    const CSize size{image.Width(), image.Height()};
    if (status && size == m_size)
        m_pyramid.Change({0, 0, size.width, size.height});
    else
        m_pyramid.Clear();
    if (status)
        m_size = size;
    return status;
}

void CCelDisplay::Update(const CCelImg& image, const CGridSettings& grid, const CSkinSheet& skins,
                         const CRect& changed) {
    UpdateBitmap(image, grid, changed, m_bitmap, skins);
    m_pyramid.Change(changed);
}

void CCelDisplay::ShowInstead(CDisplayBitmap bitmap) {
    if (bitmap.bytes.size() != m_bitmap.bytes.size() || bitmap.width != m_bitmap.width)
        return;
    m_bitmap = std::move(bitmap);
    m_pyramid.Change({0, 0, m_size.width, m_size.height});
}

const std::uint8_t* CCelDisplay::RowOf(int y) const {
    return m_bitmap.bytes.data() +
           static_cast<std::size_t>(y) * static_cast<std::size_t>(m_bitmap.width) * pixelSize;
}

void CCelDisplay::Scale(const CViewMapping& mapping, const QRect& part) {
    GrowScaled(mapping, {part.width(), part.height()});
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

bool CCelDisplay::IsMixed(const CViewMapping& mapping) const {
    const double factor = mapping.zoom.Factor();
    if (factor >= crispFactor)
        return false;
    const bool movesPixels = mapping.zoom.IsLevel() && std::fmod(mapping.turn.degrees, 90) == 0;
    return factor < 1 ? m_isSmooth || !movesPixels || !mapping.turn.IsUpright() : !movesPixels;
}

void CCelDisplay::Paint(QPainter& painter, const CViewMapping& mapping, const QRect& exposed) {
    if (mapping.turn.IsUpright() && !IsMixed(mapping))
        PaintUpright(painter, mapping, exposed);
    else
        PaintTurned(painter, mapping, exposed);
}

void CCelDisplay::SampleRow(const CViewMapping& mapping, CPoint left, bool isMixed, std::span<QRgb> colors) const {
    const CRealPoint start = mapping.ToImage({0.5, left.y + 0.5});
    const CRealPoint next = mapping.ToImage({1.5, left.y + 0.5});
    const CRealPoint step{next.x - start.x, next.y - start.y};
    // Worked out for the whole row, whatever part of it is asked for, so that parts fit together.
    const CColumns inside =
        Meet(ColumnsInside(start.x, step.x, m_size.width), ColumnsInside(start.y, step.y, m_size.height));
    const int count = static_cast<int>(colors.size());
    const int first = std::clamp(inside.first - left.x, 0, count);
    const int end = std::clamp(inside.end - left.x, first, count);
    std::fill_n(colors.begin(), first, surround.rgb());
    std::fill(colors.begin() + end, colors.end(), surround.rgb());
    const std::span<QRgb> shown =
        colors.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first));
    if (isMixed) {
        m_pyramid.Sample(start, step, left.x + first, shown);
        return;
    }
    for (int column = left.x + first; QRgb & color : shown) {
        const int x = std::clamp(static_cast<int>(start.x + column * step.x), 0, m_size.width - 1);
        const int y = std::clamp(static_cast<int>(start.y + column * step.y), 0, m_size.height - 1);
        color = PixelAt(RowOf(y) + static_cast<std::size_t>(x) * pixelSize);
        ++column;
    }
}

void CCelDisplay::PaintTurned(QPainter& painter, const CViewMapping& mapping, const QRect& exposed) {
    bool isMixed = IsMixed(mapping);
    try {
        if (isMixed)
            m_pyramid.Prepare(m_bitmap, m_size, mapping.zoom.Factor());
    } catch (const std::bad_alloc&) {
        m_pyramid.Clear();
        isMixed = false;
    }
    GrowScaled(mapping, {exposed.width(), exposed.height()});
    for (int y = 0; y < exposed.height(); ++y)
        SampleRow(mapping, {exposed.left(), exposed.top() + y}, isMixed,
                  {reinterpret_cast<QRgb*>(m_scaled.scanLine(y)), static_cast<std::size_t>(exposed.width())});
    painter.drawImage(exposed, m_scaled, QRect(QPoint(), exposed.size()));
    DrawBorder(painter, mapping);
}

void CCelDisplay::GrowScaled(const CViewMapping& mapping, CSize least) {
    if (m_scaled.width() < least.width || m_scaled.height() < least.height)
        m_scaled = QImage(std::max({m_scaled.width(), least.width, mapping.client.width}),
                          std::max({m_scaled.height(), least.height, mapping.client.height}), QImage::Format_RGB32);
}

void CCelDisplay::PaintUpright(QPainter& painter, const CViewMapping& mapping, const QRect& exposed) {
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
