#include "views/dialogs/SplitPreview.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace velmor {

namespace {

constexpr QSize usualSize(520, 400);
constexpr double mostScale = 16;
constexpr double zoomStep = 1.25;
constexpr double keyStep = 40;
constexpr double grip = 6; ///< pixels beside the line that take hold of it

} // namespace

CSplitPreview::CSplitPreview(const QString& name) {
    setObjectName(name);
    setAccessibleName("The drawing before and after");
    setToolTip("Drag the line to see more of the drawing before or after. Wheel: zoom, drag: move");
    setMinimumSize(240, 200);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

QSize CSplitPreview::sizeHint() const {
    return usualSize;
}

void CSplitPreview::Show(CSide before, CSide after) {
    const QSizeF content = Content();
    m_before = std::move(before);
    m_after = std::move(after);
    m_scaledBefore = m_scaledAfter = QImage();
    if (Content() != content)
        Fit();
    update();
}

void CSplitPreview::SetSplit(double split) {
    m_split = std::clamp(split, 0.0, 1.0);
    update();
}

void CSplitPreview::Fit() {
    m_scale = 0;
    update();
}

void CSplitPreview::ShowActualSize() {
    const QPointF middle(width() / 2.0, height() / 2.0);
    ZoomAt(middle, 1 / devicePixelRatioF() / Scale());
}

QSizeF CSplitPreview::Content() const {
    return QSizeF(m_before.image.size()).expandedTo(QSizeF(m_after.image.size()));
}

double CSplitPreview::FittingScale() const {
    const QSizeF content = Content();
    return content.isEmpty() ? 1 : std::min({width() / content.width(), height() / content.height(), 1.0});
}

QPointF CSplitPreview::Origin() const {
    const QPointF middle(width() / 2.0, height() / 2.0);
    const QSizeF content = Content();
    const QPointF shown = m_scale > 0 ? m_middle : QPointF(content.width() / 2, content.height() / 2);
    return middle - shown * Scale();
}

bool CSplitPreview::IsOnSplit(double x) const {
    return std::abs(x - SplitX()) <= grip;
}

void CSplitPreview::ZoomAt(QPointF at, double factor) {
    const double scale = std::clamp(Scale() * factor, std::min(FittingScale(), 1.0) / 2, mostScale);
    const QPointF place = (at - Origin()) / Scale();
    m_middle = place + (QPointF(width() / 2.0, height() / 2.0) - at) / scale;
    m_scale = scale;
    update();
}

void CSplitPreview::MoveBy(QPointF way) {
    const QSizeF content = Content();
    if (m_scale <= 0)
        m_middle = QPointF(content.width() / 2, content.height() / 2);
    m_scale = Scale();
    m_middle -= way / m_scale;
    m_middle.setX(std::clamp(m_middle.x(), 0.0, content.width()));
    m_middle.setY(std::clamp(m_middle.y(), 0.0, content.height()));
    update();
}

void CSplitPreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Mid));
    PaintSide(painter, m_before, m_scaledBefore, QRectF(0, 0, SplitX(), height()));
    PaintSide(painter, m_after, m_scaledAfter, QRectF(SplitX(), 0, width() - SplitX(), height()));
    if (!Content().isEmpty())
        PaintSplit(painter);
    painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Dark));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void CSplitPreview::PaintSide(QPainter& painter, const CSide& side, QImage& scaled, const QRectF& clip) {
    if (side.image.isNull())
        return;
    const double ratio = devicePixelRatioF();
    const QPointF corner = Origin() + QPointF(0, (Content().height() - side.image.height()) * Scale());
    const QSizeF size = QSizeF(side.image.size()) * Scale();
    painter.save();
    painter.setClipRect(clip);
    painter.fillRect(QRectF(corner, size), Qt::white);
    if (Scale() * ratio < 1) {
        const QSize pixels = (size * ratio).toSize().expandedTo(QSize(1, 1));
        if (scaled.size() != pixels)
            scaled = side.image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        painter.drawImage(QRectF(corner, size), scaled);
    } else {
        painter.drawImage(QRectF(corner, size), side.image);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(corner);
    painter.scale(Scale(), Scale());
    QPen pen(palette().color(QPalette::Highlight), 2);
    pen.setCosmetic(true);
    painter.setPen(pen);
    for (const QPainterPath& mark : side.marks)
        painter.drawPath(mark);
    painter.restore();
}

void CSplitPreview::PaintSplit(QPainter& painter) const {
    const QColor color = palette().color(QPalette::Highlight);
    const double x = SplitX();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 2));
    painter.drawLine(QPointF(x, 0), QPointF(x, height()));
    painter.setBrush(color);
    painter.drawEllipse(QPointF(x, height() / 2.0), grip, grip);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
}

void CSplitPreview::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_dragFrom = event->position();
    m_drag = IsOnSplit(m_dragFrom.x()) ? Drag::Split : Drag::Image;
}

void CSplitPreview::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    if (m_drag == Drag::Split) {
        SetSplit(at.x() / std::max(width(), 1));
        if (splitChanged)
            splitChanged(m_split);
    } else if (m_drag == Drag::Image) {
        MoveBy(at - std::exchange(m_dragFrom, at));
    }
    const bool isOnSplit = m_drag == Drag::Split || (m_drag == Drag::None && IsOnSplit(at.x()));
    setCursor(isOnSplit ? Qt::SplitHCursor : m_drag == Drag::Image ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
}

void CSplitPreview::mouseReleaseEvent(QMouseEvent*) {
    m_drag = Drag::None;
}

void CSplitPreview::wheelEvent(QWheelEvent* event) {
    constexpr double unitsOfAStep = 120;
    ZoomAt(event->position(), std::pow(zoomStep, event->angleDelta().y() / unitsOfAStep));
    event->accept();
}

void CSplitPreview::keyPressEvent(QKeyEvent* event) {
    const QPointF middle(width() / 2.0, height() / 2.0);
    switch (event->key()) {
    case Qt::Key_Plus:
        return ZoomAt(middle, zoomStep);
    case Qt::Key_Minus:
        return ZoomAt(middle, 1 / zoomStep);
    case Qt::Key_0:
        return Fit();
    case Qt::Key_Left:
        return MoveBy({keyStep, 0});
    case Qt::Key_Right:
        return MoveBy({-keyStep, 0});
    case Qt::Key_Up:
        return MoveBy({0, keyStep});
    case Qt::Key_Down:
        return MoveBy({0, -keyStep});
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace velmor
