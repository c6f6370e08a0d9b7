// What the camera view does with mouse and keys.

#include "scene/CameraOperations.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/camera/CameraView.h"
#include "views/xsheet/XSheetMouse.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace velmor {

namespace {

// Only moving turns the mouse's motion into the camera's rotation.
double TurnOfInput(const CSceneModel& model) {
    const double rotation = model.Scene().camera.At(model.cursorFrame).rotation;
    return model.inputMode == InputMode::Move && std::isfinite(rotation) ? rotation : 0;
}

// To the next frames with the arrows, by a second with the page keys, to the ends with Home and End.
std::optional<int> FrameAfterKey(int key, int frame, int frameCount, int frameRate) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        frame -= 1;
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
        frame += 1;
        break;
    case Qt::Key_PageUp:
        frame -= frameRate;
        break;
    case Qt::Key_PageDown:
        frame += frameRate;
        break;
    case Qt::Key_Home:
        frame = 0;
        break;
    case Qt::Key_End:
        frame = frameCount - 1;
        break;
    default:
        return std::nullopt;
    }
    return std::max(0, std::min(frame, frameCount - 1));
}

} // namespace

CPoint CCameraView::InPicture(QPoint point) const {
    const QPoint inPicture = point - PictureRect().topLeft();
    return {inPicture.x(), inPicture.y()};
}

CCameraDrag CCameraView::NewInput(QPoint point) const {
    return {InPicture(point), m_zoom, TurnOfInput(m_doc.Model())};
}

CPoint CCameraView::MotionTo(QPoint point) {
    // Another mode or frame may have been chosen meanwhile.
    if (m_drag->input->Turn() != TurnOfInput(m_doc.Model()))
        m_drag->input = NewInput(m_drag->last);
    m_drag->last = point;
    return m_drag->input->MotionTo(InPicture(point));
}

void CCameraView::mousePressEvent(QMouseEvent* event) {
    const bool takesButton = event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton;
    if (m_drag || !takesButton || !IsSceneOpen())
        return;
    const QPoint point = event->position().toPoint();
    const bool pans = event->button() == Qt::MiddleButton || m_panMode || m_spaceHeld;
    m_drag = CDrag{event->button(), point, std::nullopt};
    if (!pans) {
        m_drag->input = NewInput(point);
        m_doc.Camera().StartCamInput();
    }
    UpdateCursor();
}

void CCameraView::mouseMoveEvent(QMouseEvent* event) {
    if (!m_drag)
        return;
    const QPoint point = event->position().toPoint();
    if (!event->buttons().testFlag(m_drag->button)) {
        EndDrag(m_drag->last); // let go where no event could be seen, over a message for instance
    } else if (m_drag->input) {
        const CPoint motion = MotionTo(point);
        if (motion != CPoint{})
            m_doc.Camera().ProcessCamInput(motion.x, motion.y);
    } else {
        ScrollTo(ScrollPosition() + std::exchange(m_drag->last, point) - point);
    }
}

void CCameraView::mouseReleaseEvent(QMouseEvent* event) {
    if (m_drag && event->button() == m_drag->button)
        EndDrag(event->position().toPoint());
}

// The document applies the motion it is given at the end once more, so that it gets only what is still open.
void CCameraView::EndDrag(QPoint point) {
    const bool isInput = m_drag->input.has_value();
    const CPoint motion = isInput ? MotionTo(point) : CPoint{};
    m_drag.reset();
    UpdateCursor();
    if (isInput)
        m_doc.Camera().EndCamInput(motion.x, motion.y);
}

void CCameraView::mouseDoubleClickEvent(QMouseEvent* event) {
    // Its second press begins no camera input. Scrolling may begin as often as it likes.
    if (event->button() == Qt::MiddleButton)
        mousePressEvent(event);
}

void CCameraView::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (!IsSceneOpen())
        return;
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        if (const CZoomLevel zoom = m_wheel.ZoomAfter(*event, m_zoom); zoom != m_zoom)
            SetZoomAt(zoom, event->position().toPoint());
        return;
    }
    const CPoint turn = m_wheel.PixelsOf(*event);
    ScrollTo(ScrollPosition() - QPoint(turn.x, turn.y));
}

void CCameraView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space) {
        m_spaceHeld = true;
        UpdateCursor();
        return;
    }
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const CSceneModel& model = m_doc.Model();
    const std::optional<int> frame = FrameAfterKey(
        event->key(), model.cursorFrame, model.Scene().xsheet.FrameCount(), model.Scene().geometry.frameRate);
    if (!plain || !frame || !model.sceneOpen) {
        event->ignore();
    } else if (!m_drag && *frame != model.cursorFrame) {
        MoveCursor(m_doc, {model.cursorLevel, *frame}, false);
    }
}

void CCameraView::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space) {
        QAbstractScrollArea::keyReleaseEvent(event);
        return;
    }
    m_spaceHeld = event->isAutoRepeat();
    UpdateCursor();
}

void CCameraView::focusOutEvent(QFocusEvent* event) {
    m_spaceHeld = false;
    UpdateCursor();
    QAbstractScrollArea::focusOutEvent(event);
}

void CCameraView::contextMenuEvent(QContextMenuEvent* event) {
    if (m_menu && !m_drag)
        m_menu->popup(event->globalPos());
}

} // namespace velmor
