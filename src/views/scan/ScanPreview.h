#pragma once

#include "platform/scanner/Scanner.h"

#include <QImage>
#include <QPixmap>
#include <QWidget>
#include <functional>

namespace velmor {

/// The picture of a scanned page.
QImage ImageOf(const CScannedPage& page);

/// The scanner's glass with what lies on it, and the area that will be scanned, which the mouse can draw.
class CScanPreview final : public QWidget {
public:
    explicit CScanPreview(QSizeF glass);

    /// `area` lies on the glass.
    void SetArea(const CScanArea& area);
    /// Shows a picture of all of the glass.
    void SetPicture(const QImage& picture);

    std::function<void(const CScanArea&)> areaDrawn; ///< called while the mouse draws an area

    QSize sizeHint() const override { return {340, 460}; }
    QSize minimumSizeHint() const override { return {180, 240}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QRectF Glass() const;
    void PaintGlass(QPainter& painter);
    void PaintArea(QPainter& painter) const;

    QSizeF m_glass;
    CScanArea m_area;
    QImage m_picture;
    QPixmap m_scaled; ///< the picture as large as it is shown; null when that has changed
    QPointF m_pressed;
    bool m_isDrawing = false;
};

} // namespace velmor
