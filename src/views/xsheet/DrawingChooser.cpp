#include "views/xsheet/DrawingChooser.h"

#include <QPainter>
#include <QScreen>
#include <algorithm>

namespace velmor {

namespace {

constexpr int border = 6;
constexpr QSize thumbnail{88, 66};
constexpr int gap = 4;

} // namespace

CDrawingChooser::CDrawingChooser(QWidget& owner)
    : QWidget(&owner, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus) {
    setObjectName("drawing chooser");
    setAccessibleName("Drawings");
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

QString CDrawingChooser::Line() const {
    return m_choice.more > 0 ? m_choice.text + QString(" (%1 more)").arg(m_choice.more) : m_choice.text;
}

void CDrawingChooser::Show(CDrawingChoice choice) {
    m_choice = std::move(choice);
    const int line = fontMetrics().height();
    const int count = static_cast<int>(m_choice.drawings.size());
    const int pictures = count * (thumbnail.width() + gap) - gap;
    const int width = std::max(fontMetrics().horizontalAdvance(Line()), pictures);
    const int height = line + (count > 0 ? gap + thumbnail.height() + line : 0);
    resize(width + 2 * border, height + 2 * border);
    update();
}

void CDrawingChooser::PlaceBeside(const QRect& cell) {
    QPoint place = cell.topRight() + QPoint(border, 0);
    if (const QScreen* shown = parentWidget()->screen()) {
        const QRect room = shown->availableGeometry();
        if (place.x() + width() > room.right())
            place.setX(cell.left() - border - width());
        place.setX(std::max(place.x(), room.left()));
        place.setY(std::clamp(place.y(), room.top(), std::max(room.top(), room.bottom() - height())));
    }
    move(place);
    show();
}

QRect CDrawingChooser::DrawingRect(int index) const {
    const int line = fontMetrics().height();
    return {border + index * (thumbnail.width() + gap), border + line + gap, thumbnail.width(),
            thumbnail.height() + line};
}

void CDrawingChooser::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Mid));
    painter.fillRect(rect().adjusted(1, 1, -1, -1), palette().color(QPalette::Window));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(border, border + fontMetrics().ascent(), Line());
    for (int index = 0; index < static_cast<int>(m_choice.drawings.size()); ++index) {
        const CDrawingChoice::CDrawing& drawing = m_choice.drawings[static_cast<std::size_t>(index)];
        const QRect place = DrawingRect(index);
        const bool isChosen = index == m_choice.chosen;
        if (isChosen)
            painter.fillRect(place.adjusted(-2, -2, 2, 2), palette().color(QPalette::Highlight));
        if (!drawing.thumbnail.isNull()) {
            const QSize size =
                drawing.thumbnail.deviceIndependentSize().toSize().scaled(thumbnail, Qt::KeepAspectRatio);
            painter.drawPixmap(QRect(place.topLeft() + QPoint((thumbnail.width() - size.width()) / 2,
                                                              (thumbnail.height() - size.height()) / 2),
                                     size),
                               drawing.thumbnail);
        }
        painter.setPen(palette().color(isChosen ? QPalette::HighlightedText : QPalette::WindowText));
        const QRect name = place.adjusted(0, thumbnail.height(), 0, 0);
        painter.drawText(name, Qt::AlignCenter,
                         fontMetrics().elidedText(drawing.name, Qt::ElideMiddle, name.width()));
    }
}

} // namespace velmor
