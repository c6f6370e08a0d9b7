#include "views/widgets/FrameSlider.h"

#include <QKeyEvent>

namespace velmor {

void CFrameSlider::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Down:
        return triggerAction(SliderSingleStepAdd);
    case Qt::Key_Up:
        return triggerAction(SliderSingleStepSub);
    case Qt::Key_PageDown:
        return triggerAction(SliderPageStepAdd);
    case Qt::Key_PageUp:
        return triggerAction(SliderPageStepSub);
    default:
        QSlider::keyPressEvent(event);
    }
}

} // namespace velmor
