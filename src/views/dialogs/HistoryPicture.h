#pragma once

#include "scene/history/HistoryEntry.h"

#include <QPixmap>
#include <QRect>

class QPainter;
class QPalette;

namespace velmor {

/// Null where there is no picture, or its size does not fit its bytes.
QPixmap PixmapOf(const CHistoryPicture& picture);

/// Where an image of that size stands in the middle of `room`, made smaller where it is larger.
QRect FittedInto(const QRect& room, QSize size);

/// Draws a sheet as small as `room`, with a column for each level and the changed cells marked.
void DrawMiniSheet(QPainter& painter, const QRect& room, const CHistoryEntry& entry, const QPalette& palette);

/// Where the changed cells are in a small sheet: `levels` columns and `frames` rows, at least one pixel each that
/// can be seen, however large the sheet is.
QRect ChangedCells(const QRect& sheet, const CXSheetSelection& cells, int levels, int frames);

} // namespace velmor
