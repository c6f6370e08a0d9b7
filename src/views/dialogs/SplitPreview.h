#pragma once

#include <QImage>
#include <QPainterPath>
#include <QWidget>
#include <functional>
#include <vector>

namespace velmor {

/// An image before and after a change, on the two sides of an upright line that can be dragged; both stand on the
/// same lower left corner. Zoomed with the wheel or the keys + and -, moved by dragging or with the arrow keys, and
/// fitted again with the key 0.
class CSplitPreview final : public QWidget {
public:
    struct CSide {
        QImage image;
        std::vector<QPainterPath> marks; ///< in pixels of the image, from its upper left corner
    };

    /// `name` is the object's.
    explicit CSplitPreview(const QString& name);

    /// Zoom and place stay unless the size changes.
    void Show(CSide before, CSide after);
    /// How much of the width shows what was before: 0 to 1.
    void SetSplit(double split);
    double Split() const { return m_split; }
    void Fit();
    /// One pixel of the image for one of the screen.
    void ShowActualSize();

    std::function<void(double)> splitChanged; ///< called when the line was dragged

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Drag { None, Split, Image };

    QSizeF Content() const;
    double FittingScale() const;
    double Scale() const { return m_scale > 0 ? m_scale : FittingScale(); }
    /// Where the content's upper left corner is shown.
    QPointF Origin() const;
    double SplitX() const { return m_split * width(); }
    bool IsOnSplit(double x) const;
    void ZoomAt(QPointF at, double factor);
    void MoveBy(QPointF way);
    void PaintSide(QPainter& painter, const CSide& side, QImage& scaled, const QRectF& clip);
    void PaintSplit(QPainter& painter) const;

    CSide m_before;
    CSide m_after;
    QImage m_scaledBefore; ///< as they are shown, when smaller than they are
    QImage m_scaledAfter;
    double m_split = 0.5;
    double m_scale = 0; ///< 0: fits
    QPointF m_middle;   ///< of what is shown, in the content; unless it fits
    Drag m_drag = Drag::None;
    QPointF m_dragFrom;
};

} // namespace velmor
