#include "views/dialogs/HistoryPicture.h"

#include <QImage>
#include <QPainter>
#include <QPalette>
#include <algorithm>

namespace velmor {

namespace {

constexpr int widestColumn = 14;
constexpr int narrowestRuled = 4; // columns that are ruled
constexpr int headHeight = 5;
constexpr int leastMark = 3;

struct CSpan {
    int begin = 0;
    int length = 0;
};

// Items `first` to `last` of `count` along `length` pixels.
CSpan SpanOf(int first, int last, int count, int length) {
    if (first > last)
        std::swap(first, last);
    first = std::clamp(first, 0, count - 1);
    last = std::clamp(last, first, count - 1);
    const auto at = [&](int item) { return static_cast<int>(std::int64_t{length} * item / count); };
    const int wanted = std::max(at(last + 1) - at(first), std::min(leastMark, length));
    return {std::clamp(at(first), 0, length - wanted), wanted};
}

QColor Faint(QColor color, int alpha) {
    color.setAlpha(alpha);
    return color;
}

} // namespace

QPixmap PixmapOf(const CHistoryPicture& picture) {
    const std::int64_t needed = std::int64_t{picture.width} * picture.height * 3;
    if (picture.width <= 0 || picture.height <= 0 || static_cast<std::int64_t>(picture.rgb.size()) < needed)
        return {};
    const QImage image(picture.rgb.data(), picture.width, picture.height, qsizetype{picture.width} * 3,
                       QImage::Format_RGB888);
    return QPixmap::fromImage(image);
}

QRect FittedInto(const QRect& room, QSize size) {
    if (size.width() > room.width() || size.height() > room.height())
        size = size.scaled(room.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    QRect fitted({}, size);
    fitted.moveCenter(room.center());
    return fitted;
}

QRect ChangedCells(const QRect& sheet, const CXSheetSelection& cells, int levels, int frames) {
    const CSpan across = SpanOf(cells.firstLevel, cells.lastLevel, std::max(levels, 1), sheet.width());
    const CSpan down = SpanOf(cells.firstFrame, cells.lastFrame, std::max(frames, 1), sheet.height());
    return {sheet.x() + across.begin, sheet.y() + down.begin, across.length, down.length};
}

void DrawMiniSheet(QPainter& painter, const QRect& room, const CHistoryEntry& entry, const QPalette& palette) {
    const int levels = std::max(entry.levels, 1);
    const int column = std::min(widestColumn, room.width() / levels);
    QRect whole = room;
    if (column > 0) {
        whole.setWidth(std::max(column * levels, widestColumn));
        whole.moveCenter(room.center());
    }
    const QColor ink = palette.color(QPalette::Text);
    painter.fillRect(whole, Faint(ink, 16));
    painter.fillRect(QRect(whole.topLeft(), QSize(whole.width(), headHeight)), Faint(ink, 48));
    for (int level = 1; level < levels && column >= narrowestRuled; ++level)
        painter.fillRect(whole.x() + level * column, whole.y(), 1, whole.height(), Faint(ink, 40));
    if (entry.cells)
        painter.fillRect(ChangedCells(whole.adjusted(0, headHeight, 0, 0), *entry.cells, levels, entry.frames),
                         palette.color(QPalette::Highlight));
}

} // namespace velmor
