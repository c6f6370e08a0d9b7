#include "views/widgets/MessageBadge.h"

#include <QPainter>
#include <QWidget>

namespace velmor {

QPixmap MessageBadge(const QWidget& widget, QChar sign) {
    constexpr int side = 36;
    const double scale = widget.devicePixelRatioF();
    QPixmap badge((QSizeF(side, side) * scale).toSize());
    badge.setDevicePixelRatio(scale);
    badge.fill(Qt::transparent);
    QPainter painter(&badge);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(widget.palette().highlight());
    painter.drawEllipse(0, 0, side, side);
    QFont font = widget.font();
    font.setPixelSize(side * 2 / 3);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(widget.palette().color(QPalette::HighlightedText));
    painter.drawText(QRect(0, 0, side, side), Qt::AlignCenter, sign);
    return badge;
}

} // namespace velmor
