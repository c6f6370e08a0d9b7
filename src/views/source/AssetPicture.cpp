#include "views/source/AssetPicture.h"

#include "image/CelImg.h"
#include "sound/SoundFile.h"
#include "views/Text.h"
#include "views/source/SourceView.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>

namespace velmor {

namespace {

constexpr QSizeF cardSize(96, 72);
constexpr double cardStep = 5;
constexpr double cardMargin = 4;
/// Where the front card stands from the mouse, so that the cell under it is seen.
constexpr QPointF fromMouse(12, 10);
constexpr double badgeHeight = 18;

QFont CardFont() {
    QFont font;
    font.setPixelSize(11);
    return font;
}

void PaintCard(QPainter& painter, const QRectF& card, const CAssetCard& asset) {
    painter.setPen(QPen(QColor(90, 90, 90), 1));
    painter.setBrush(QColor(250, 250, 250));
    painter.drawRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    const QRectF inner = card.adjusted(cardMargin, cardMargin, -cardMargin, -cardMargin);
    if (!asset.thumbnail.isNull()) {
        const QSizeF size = asset.thumbnail.deviceIndependentSize().scaled(inner.size(), Qt::KeepAspectRatio);
        const QPointF corner = inner.center() - QPointF(size.width() / 2, size.height() / 2);
        painter.drawPixmap(QRectF(corner, size), asset.thumbnail, asset.thumbnail.rect());
        return;
    }
    const QRectF text(inner.left(), inner.bottom() - 16, inner.width(), 16);
    const QRectF icon(inner.center().x() - 16, inner.top() + 8, 32, 32);
    asset.icon.paint(&painter, icon.toRect());
    painter.setPen(Qt::black);
    painter.drawText(text, Qt::AlignCenter,
                     QFontMetricsF(painter.font()).elidedText(asset.name, Qt::ElideRight, text.width()));
}

void PaintBadge(QPainter& painter, const QPointF& topRight, int count) {
    const QString text = QString::number(count);
    const double width = std::max(badgeHeight, QFontMetricsF(painter.font()).horizontalAdvance(text) + 10);
    const QRectF badge(topRight.x() - width / 2, topRight.y() - badgeHeight / 2, width, badgeHeight);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.setBrush(QColor(200, 40, 50));
    painter.drawRoundedRect(badge, badgeHeight / 2, badgeHeight / 2);
    painter.drawText(badge, Qt::AlignCenter, text);
}

// Rich text takes pictures by address only; this one holds the picture itself.
QString PictureTag(const QPixmap& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    const QSize size = picture.deviceIndependentSize().toSize();
    return QStringLiteral("<img width=\"%1\" height=\"%2\" src=\"data:image/png;base64,%3\"/><br/>")
        .arg(size.width())
        .arg(size.height())
        .arg(QString::fromLatin1(bytes.toBase64()));
}

QString SizeText(SourceMode kind, const std::string& name, const Path& file) {
    if (kind == SourceMode::Sounds) {
        std::vector<std::uint8_t> samples;
        if (!LoadSoundFile(file, name, samples))
            return {};
        return QStringLiteral("%1 s").arg(static_cast<double>(samples.size()) / samplesPerSecond, 0, 'f', 2);
    }
    CSize size;
    if (!CCelImg::GetDimensions(file, size))
        return {};
    return QStringLiteral("%1 x %2").arg(size.width).arg(size.height);
}

} // namespace

QPixmap PaintDragPicture(const std::vector<CAssetCard>& cards, int count, double scale) {
    const int shown = std::min(static_cast<int>(cards.size()), mostCards);
    if (shown == 0)
        return {};
    const double spread = cardStep * (shown - 1);
    const QSizeF size(fromMouse.x() + cardSize.width() + spread + badgeHeight,
                      fromMouse.y() + cardSize.height() + spread + 1);
    QPixmap picture((size * scale).toSize());
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setFont(CardFont());
    painter.setOpacity(0.85);
    for (int i = shown - 1; i >= 0; --i) {
        const QPointF corner = fromMouse + QPointF(cardStep * i, cardStep * i);
        PaintCard(painter, QRectF(corner, cardSize), cards[static_cast<std::size_t>(i)]);
    }
    painter.setOpacity(1);
    if (count > 1)
        PaintBadge(painter, fromMouse + QPointF(cardSize.width(), 0), count);
    return picture;
}

std::unique_ptr<QMimeData> MakeDragData(const std::vector<std::string>& titles) {
    QByteArray lines;
    for (const std::string& title : titles)
        lines += QByteArray::fromStdString(title) + '\n';
    auto data = std::make_unique<QMimeData>();
    data->setData(CSourceView::dragType, lines);
    return data;
}

QString AssetToolTip(SourceMode kind, const std::string& title, const Path& file, const QPixmap& thumbnail) {
    QString text = thumbnail.isNull() ? QString() : PictureTag(thumbnail);
    text += QStringLiteral("<b>%1</b>").arg(ToQt(title).toHtmlEscaped());
    if (const QString size = SizeText(kind, title, file); !size.isEmpty())
        text += QStringLiteral("&nbsp;&nbsp;") + size;
    return text;
}

} // namespace velmor
