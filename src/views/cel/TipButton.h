#pragma once

#include <QRadioButton>

#include <functional>

class QPainter;

namespace velmor {

/// A radio button that shows a drawing in place of the round mark and is highlighted when it is checked.
class CTipButton final : public QRadioButton {
public:
    /// Draws around the origin in the painter's brush, in logical pixels.
    using Drawing = std::function<void(QPainter&)>;

    CTipButton(int side, Drawing drawing, const QString& name, QWidget* parent = nullptr);
    /// Shows an icon over a text instead.
    CTipButton(const QString& text, const QIcon& icon, const QString& name, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& point) const override { return rect().contains(point); }
    void paintEvent(QPaintEvent* event) override;

private:
    void DrawFrame(QPainter& painter) const;

    QSize m_size;
    Drawing m_drawing;
};

} // namespace velmor
