#pragma once

#include "views/ViewMapping.h"

#include <QWidget>

#include <functional>

namespace velmor {

class CCelDisplay;

/// The whole image, turned as the view is, in a corner of the cel editor, with a frame around what the view shows.
/// A press brings the view there, a drag moves it along. It is seen only where the image is larger than the view.
class CCelNavigator final : public QWidget {
public:
    /// `display` outlives the widget; `show` brings an image point into the middle of the view.
    CCelNavigator(CCelDisplay& display, std::function<void(CRealPoint)> show, QWidget* parent);

    /// The view has come to show this; places itself in the view's corner, or hides.
    void Follow(const CViewMapping& view, bool isWanted);
    /// Pixels of the image have changed.
    void Repaint(const CRect& pixels);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    /// Where the image stands in the widget.
    CViewMapping Mapping() const;

    CCelDisplay& m_display;
    std::function<void(CRealPoint)> m_show;
    CViewMapping m_view;
};

} // namespace velmor
