#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>

class QCursor;

namespace velmor {

/// A drawn icon of the program, `name` without folder and extension; sharp at every size and scale, in the colours
/// of the palette in force. An unknown name gives an icon that paints nothing.
QIcon Icon(const char* name);
/// The same in a colour of its own, for a ground that is not the palette's; in the palette's colour for selected
/// text where it is selected.
QIcon Icon(const char* name, const QColor& ink);
/// A tool's cursor, from the drawing of that name, with its hot spot in the drawing's own pixels (32 x 32). `scale`
/// is the screen's. An unknown name gives the arrow.
QCursor ToolCursor(const char* name, int hotX, int hotY, double scale);
/// The drawing at `path` of the resources, fitted into `size` logical pixels and sharp on a screen of that scale. A
/// null pixmap when there is no such drawing.
QPixmap DrawnPixmap(const QString& path, QSize size, double scale);

} // namespace velmor
