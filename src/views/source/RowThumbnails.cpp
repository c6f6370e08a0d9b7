#include "views/source/RowThumbnails.h"

#include <QPainter>
#include <algorithm>

namespace velmor {

namespace {

/// Of a large folder all; more are begun anew.
constexpr std::size_t mostKept = 1000;
constexpr QColor frameColor(90, 110, 90);

/// In the middle of a row's picture, with a frame that sets white paper off from a light ground.
QIcon RowIcon(const QPixmap& picture) {
    if (picture.isNull())
        return {};
    QPixmap row(CRowThumbnails::size * picture.devicePixelRatio());
    row.setDevicePixelRatio(picture.devicePixelRatio());
    row.fill(Qt::transparent);
    QPainter painter(&row);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QSizeF room(CRowThumbnails::size.shrunkBy({1, 1, 1, 1}));
    QRectF place({}, picture.deviceIndependentSize().scaled(room, Qt::KeepAspectRatio));
    place.moveCenter(QRectF({}, QSizeF(CRowThumbnails::size)).center());
    painter.drawPixmap(place, picture, picture.rect());
    painter.setPen(QPen(frameColor, 1));
    painter.drawRect(place.adjusted(-0.5, -0.5, 0.5, 0.5));
    painter.end();
    QIcon icon(row);
    icon.addPixmap(row, QIcon::Selected); // or it would take the colour of the selection
    return icon;
}

} // namespace

CRowThumbnails::CRowThumbnails(std::function<QPixmap(const Path& file)> source, std::function<void()> made)
    : m_source(std::move(source)), m_told(std::move(made)) {
    m_idle.setSingleShot(true);
    QObject::connect(&m_idle, &QTimer::timeout, &m_idle, [this] { MakeNext(); });
}

QIcon CRowThumbnails::Find(const Path& file) {
    const std::optional<CFileIdentity> identity = IdentifyFile(file);
    if (!identity)
        return {};
    const auto known = m_made.find(file);
    if (known == m_made.end() || known->second.identity != *identity) {
        if (std::ranges::find(m_wanted, file) == m_wanted.end())
            m_wanted.push_back(file);
        m_idle.start(0);
    }
    return known == m_made.end() ? QIcon() : known->second.icon;
}

void CRowThumbnails::MakeNext() {
    if (m_wanted.empty())
        return;
    const Path file = std::move(m_wanted.front());
    m_wanted.pop_front();
    if (const std::optional<CFileIdentity> identity = IdentifyFile(file)) {
        if (m_made.size() >= mostKept)
            m_made.clear();
        m_made[file] = {*identity, RowIcon(m_source(file))};
    }
    if (!m_wanted.empty())
        m_idle.start(0);
    m_told();
}

} // namespace velmor
