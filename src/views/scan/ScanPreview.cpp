#include "views/scan/ScanPreview.h"

#include "views/scan/ScanForm.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace velmor {

namespace {

constexpr QColor paper(255, 255, 255);
constexpr QColor hint(110, 110, 110);
constexpr QColor outside(40, 44, 52, 110);
constexpr QColor edge(30, 110, 220);

} // namespace

QImage ImageOf(const CScannedPage& page) {
    const bool isLineArt = page.mode == ScanMode::LineArt;
    const int rowBytes = isLineArt ? (page.width + 7) / 8 : page.width * 3;
    if (page.width <= 0 || page.height <= 0 ||
        page.rows.size() != static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(page.height))
        return {};
    QImage rows(page.rows.data(), page.width, page.height, rowBytes,
                isLineArt ? QImage::Format_Mono : QImage::Format_BGR888);
    if (isLineArt)
        rows.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    return rows.convertToFormat(QImage::Format_RGB32);
}

CScanPreview::CScanPreview(QSizeF glass) : m_glass(glass), m_area(FitArea({}, glass)) {
    setObjectName("preview picture");
    setAccessibleName("Preview");
    setToolTip("Draw with the mouse what is to be scanned");
    setCursor(Qt::CrossCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void CScanPreview::SetArea(const CScanArea& area) {
    m_area = area;
    update();
}

void CScanPreview::SetPicture(const QImage& picture) {
    m_picture = picture;
    m_scaled = {};
    update();
}

QRectF CScanPreview::Glass() const {
    return GlassRectangle(m_glass, size());
}

void CScanPreview::resizeEvent(QResizeEvent*) {
    m_scaled = {};
}

void CScanPreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Mid));
    PaintGlass(painter);
    PaintArea(painter);
}

void CScanPreview::PaintGlass(QPainter& painter) {
    const QRectF glass = Glass();
    painter.fillRect(glass, paper);
    if (m_picture.isNull()) {
        painter.setPen(hint);
        painter.drawText(glass, Qt::AlignCenter | Qt::TextWordWrap, "Press Preview to see\nwhat lies on the glass");
        return;
    }
    const double ratio = devicePixelRatioF();
    const QSize pixels = (glass.size() * ratio).toSize();
    if (m_scaled.isNull() || m_scaled.devicePixelRatio() != ratio) {
        m_scaled = QPixmap::fromImage(m_picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        m_scaled.setDevicePixelRatio(ratio);
    }
    painter.drawPixmap(glass.topLeft(), m_scaled);
}

void CScanPreview::PaintArea(QPainter& painter) const {
    const QRectF glass = Glass();
    const QRectF area = ToWindow(m_area, m_glass, glass);
    QPainterPath rest;
    rest.addRect(glass);
    rest.addRect(area);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(rest, outside);
    painter.setPen(QPen(edge, 1.5));
    painter.drawRect(area);
}

void CScanPreview::mousePressEvent(QMouseEvent* event) {
    m_isDrawing = false;
    m_pressed = event->position();
}

void CScanPreview::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton))
        return;
    const QPointF way = event->position() - m_pressed;
    m_isDrawing = m_isDrawing || way.manhattanLength() >= QApplication::startDragDistance();
    if (!m_isDrawing)
        return;
    SetArea(ToGlass(QRectF(m_pressed, event->position()), m_glass, Glass()));
    if (areaDrawn)
        areaDrawn(m_area);
}

void CScanPreview::mouseReleaseEvent(QMouseEvent*) {
    m_isDrawing = false;
}

} // namespace velmor
