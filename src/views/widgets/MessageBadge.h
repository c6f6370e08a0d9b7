#pragma once

#include <QPixmap>

class QWidget;

namespace velmor {

/// The round sign at the left of messages, "i" or "?", in the colours of `widget`'s palette and sharp on its
/// screen.
QPixmap MessageBadge(const QWidget& widget, QChar sign);

} // namespace velmor
