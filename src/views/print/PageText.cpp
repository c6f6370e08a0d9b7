#include "views/print/PageText.h"

#include "views/print/XSheetPages.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace velmor {

namespace {
constexpr double narrowest = 0.65;
}

QFont PageFont(double points, bool bold) {
    QFont font;
    font.setFamilies({"Arial", "Helvetica", "Liberation Sans", "Nimbus Sans", "DejaVu Sans"});
    font.setStyleHint(QFont::SansSerif);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(static_cast<int>(std::lround(points * pagePoint)));
    font.setBold(bold);
    return font;
}

double TextWidth(const QFont& font, const QString& text) {
    return QFontMetricsF(font).horizontalAdvance(text);
}

void DrawLine(QPainter& painter, const QRectF& place, Qt::Alignment align, const QString& text) {
    if (text.isEmpty() || place.width() <= 0)
        return;
    const int flags = static_cast<int>(align | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip;
    const QFontMetricsF metrics(painter.font());
    const double width = metrics.horizontalAdvance(text);
    if (width <= place.width()) {
        painter.drawText(place, flags, text);
        return;
    }
    const double factor = std::max(narrowest, place.width() / width);
    const double room = place.width() / factor;
    const QTransform before = painter.transform();
    painter.translate(place.left(), 0);
    painter.scale(factor, 1);
    painter.drawText(QRectF(0, place.top(), room, place.height()), flags,
                     width > room * 1.001 ? metrics.elidedText(text, Qt::ElideRight, room) : text);
    painter.setTransform(before);
}

} // namespace velmor
