#pragma once

#include <QFont>
#include <QString>

class QPainter;
class QRectF;

namespace velmor {

/// A font of the printed page, `points` high before the page's scale.
QFont PageFont(double points, bool bold = false);
double TextWidth(const QFont& font, const QString& text);
/// Draws one line in the painter's font; what is too wide is narrowed as far as it stays legible, and then cut.
/// `align` is one of Qt's horizontal alignments.
void DrawLine(QPainter& painter, const QRectF& place, Qt::Alignment align, const QString& text);

} // namespace velmor
