#include "views/xsheet/NoteSigns.h"

#include "views/Brightness.h"

#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <algorithm>

namespace velmor {

namespace {

constexpr int iconSide = 16;
constexpr int cornerSide = 6;

struct CNoteColors {
    const char* text;
    QRgb light;
    QRgb dark;
};

// As the enumeration has them.
constexpr CNoteColors noteColors[] = {
    {"None", 0, 0},
    {"Red", qRgb(204, 28, 28), qRgb(255, 110, 104)},
    {"Orange", qRgb(216, 112, 0), qRgb(255, 164, 66)},
    {"Yellow", qRgb(178, 148, 0), qRgb(240, 214, 72)},
    {"Green", qRgb(20, 132, 40), qRgb(96, 212, 112)},
    {"Blue", qRgb(28, 92, 204), qRgb(112, 172, 255)},
    {"Violet", qRgb(132, 44, 176), qRgb(206, 140, 250)},
};
static_assert(std::size(noteColors) == static_cast<std::size_t>(lastNoteColor) + 1);

} // namespace

QColor ColorOf(NoteColor color, bool dark, const QColor& none) {
    const CNoteColors& colors = noteColors[static_cast<std::size_t>(color)];
    return color == NoteColor::None ? none : QColor(dark ? colors.dark : colors.light);
}

void PaintMark(QPainter& painter, SheetMark mark, const QRectF& rect, const QColor& color) {
    const double side = std::min(rect.width(), rect.height());
    QRectF sign(0, 0, side, side);
    sign.moveCenter(rect.center());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, side / 6, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    const double inset = side / 10;
    const QRectF inner = sign.adjusted(inset, inset, -inset, -inset);
    switch (mark) {
    case SheetMark::None:
        break;
    case SheetMark::Key:
        painter.drawEllipse(inner);
        break;
    case SheetMark::Breakdown: {
        const QPointF corners[] = {{inner.center().x(), inner.top()}, inner.bottomRight(), inner.bottomLeft()};
        painter.drawPolygon(corners, 3);
        break;
    }
    case SheetMark::Inbetween:
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(sign.center(), side / 4, side / 4);
        break;
    case SheetMark::StopHold:
        painter.drawLine(inner.topLeft(), inner.bottomRight());
        painter.drawLine(inner.bottomLeft(), inner.topRight());
        break;
    }
    painter.restore();
}

void PaintCommentCorner(QPainter& painter, const QRect& rect, const QColor& color) {
    const QPoint corner(rect.right() + 1, rect.top());
    QPainterPath path(corner);
    path.lineTo(corner - QPoint(cornerSide, 0));
    path.lineTo(corner + QPoint(0, cornerSide));
    path.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, color);
    painter.restore();
}

QIcon NoteIcon(const CSheetNote& note, const QPalette& palette) {
    QPixmap pixmap(iconSide, iconSide);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const QColor color = ColorOf(note.color, IsDark(palette), palette.color(QPalette::Text));
    const QRect sign = pixmap.rect().adjusted(3, 3, -3, -3);
    if (note.mark != SheetMark::None)
        PaintMark(painter, note.mark, sign, color);
    else if (note.color != NoteColor::None)
        painter.fillRect(sign, color);
    return QIcon(pixmap);
}

std::string TextOf(SheetMark mark) {
    constexpr const char* texts[] = {"None", "Key", "Breakdown", "Inbetween", "Stop-hold"};
    static_assert(std::size(texts) == static_cast<std::size_t>(lastMark) + 1);
    return texts[static_cast<std::size_t>(mark)];
}

std::string TextOf(NoteColor color) {
    return noteColors[static_cast<std::size_t>(color)].text;
}

} // namespace velmor
