#include "views/AssetThumbnails.h"

#include "image/CelImg.h"

#include <QImage>
#include <QPainter>
#include <algorithm>

namespace velmor {

namespace {

constexpr int checkSize = 8;

void PaintCheckerboard(QPainter& painter, QSize size) {
    painter.fillRect(QRect({0, 0}, size), Qt::white);
    for (int y = 0; y < size.height(); y += checkSize)
        for (int x = y / checkSize % 2 * checkSize; x < size.width(); x += 2 * checkSize)
            painter.fillRect(x, y, checkSize, checkSize, QColor(226, 226, 226));
}

} // namespace

QImage ToQImage(const CCelImg& image) {
    if (image.GetLoadState() == LoadState::Nothing)
        return {};
    QImage result(image.Width(), image.Height(), QImage::Format_ARGB32);
    if (result.isNull())
        return {};
    const auto red = image.PlaneOf(Channel::Red), green = image.PlaneOf(Channel::Green);
    const auto blue = image.PlaneOf(Channel::Blue), alpha = image.PlaneOf(Channel::Alpha);
    for (int y = 0; y < image.Height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(result.scanLine(image.Height() - 1 - y));
        std::size_t index = image.IndexOf(0, y);
        for (int x = 0; x < image.Width(); ++x, ++index)
            row[x] = qRgba(red[index], green[index], blue[index], alpha[index]);
    }
    return result;
}

QPixmap PaintThumbnail(const QImage& image, QSize most, double scale) {
    QSize size = image.size();
    if (size.width() > most.width() || size.height() > most.height())
        size = size.scaled(most, Qt::KeepAspectRatio).expandedTo({1, 1});
    const QImage small = image.scaled(size * scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPixmap pixmap(size * scale);
    pixmap.setDevicePixelRatio(scale);
    QPainter painter(&pixmap);
    PaintCheckerboard(painter, size);
    painter.drawImage(QRectF({0, 0}, QSizeF(size)), small);
    return pixmap;
}

CAssetThumbnails::CAssetThumbnails(double scale) : m_scale(scale) {}

QPixmap CAssetThumbnails::Find(const Path& file) {
    const std::optional<CFileIdentity> identity = IdentifyFile(file);
    const auto known =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const CEntry& entry) { return entry.file == file; });
    if (known != m_entries.end()) {
        if (identity && known->identity == *identity) {
            m_entries.splice(m_entries.begin(), m_entries, known);
            return m_entries.front().pixmap;
        }
        m_entries.erase(known);
    }
    if (!identity)
        return {};
    CCelImg image;
    QPixmap pixmap;
    if (image.Load(file))
        pixmap = PaintThumbnail(ToQImage(image), {width, height}, m_scale);
    m_entries.push_front({file, *identity, pixmap});
    if (m_entries.size() > mostKept)
        m_entries.pop_back();
    return pixmap;
}

} // namespace velmor
