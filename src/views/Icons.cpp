#include "views/Icons.h"

#include <QCursor>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace velmor {
namespace {

constexpr double kDisabledOpacity = 0.38;
constexpr int kCursorSize = 32;

QByteArray ReadDrawing(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The drawing, as large as fits into the middle of `size` device pixels.
QPixmap Paint(const QByteArray& drawing, QSize size, double opacity) {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(drawing);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(opacity);
    renderer.render(&painter, QRectF(QPointF(), size));
    return pixmap;
}

/// Paints one drawing of the resources at whatever size is asked for. What was painted is kept in the application's
/// pixmap cache, by the text colour too, so that a change of the palette shows with the next repaint.
class CDrawnIconEngine : public QIconEngine {
public:
    /// An invalid colour stands for the palette's.
    explicit CDrawnIconEngine(QString path, const QColor& ink = {}) : m_path(std::move(path)), m_ink(ink) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const double ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect.topLeft(), Painted(rect.size() * ratio, ratio, mode));
    }

    // The size is in device pixels: the icon tells the pixmap its ratio.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override { return Painted(size, 1, mode); }

    QIconEngine* clone() const override { return new CDrawnIconEngine(*this); }
    QString key() const override { return QStringLiteral("velmor"); }

private:
    // The drawings look alike switched on or off and under the mouse: the button shows that.
    QPixmap Painted(QSize size, double ratio, QIcon::Mode mode) const {
        if (size.isEmpty())
            return {};
        const QByteArray colour = Ink(mode).name().toLatin1();
        const double opacity = mode == QIcon::Disabled ? kDisabledOpacity : 1;
        const QString key = QStringLiteral("%1 %2x%3@%4 %5 %6")
                                .arg(m_path)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(ratio)
                                .arg(opacity)
                                .arg(QLatin1String(colour));
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap))
            return pixmap;
        pixmap = Paint(ReadDrawing(m_path).replace("currentColor", colour), size, opacity);
        pixmap.setDevicePixelRatio(ratio);
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    QColor Ink(QIcon::Mode mode) const {
        const QPalette palette = QGuiApplication::palette();
        if (!m_ink.isValid())
            return palette.color(QPalette::WindowText);
        return mode == QIcon::Selected ? palette.color(QPalette::HighlightedText) : m_ink;
    }

    QString m_path;
    QColor m_ink;
};

} // namespace

QIcon Icon(const char* name) {
    return Icon(name, {});
}

QIcon Icon(const char* name, const QColor& ink) {
    const QString path = QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name));
    return QFile::exists(path) ? QIcon(new CDrawnIconEngine(path, ink)) : QIcon();
}

QCursor ToolCursor(const char* name, int hotX, int hotY, double scale) {
    const QPixmap pixmap =
        DrawnPixmap(QStringLiteral(":/cursors/%1.svg").arg(QLatin1String(name)), {kCursorSize, kCursorSize}, scale);
    return pixmap.isNull() ? QCursor() : QCursor(pixmap, hotX, hotY);
}

QPixmap DrawnPixmap(const QString& path, QSize size, double scale) {
    const QByteArray drawing = ReadDrawing(path);
    if (drawing.isEmpty())
        return {};
    QPixmap pixmap = Paint(drawing, size * scale, 1);
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

} // namespace velmor
