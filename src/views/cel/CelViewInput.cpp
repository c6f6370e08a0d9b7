// The mouse, the wheel and the keys of the cel editor.

#include "image/CelImg.h"
#include "scene/CelPainting.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/cel/CelView.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>
#include <utility>

namespace velmor {

namespace {

CPoint PointOf(const QSinglePointEvent& event) {
    return {static_cast<int>(std::floor(event.position().x())), static_cast<int>(std::floor(event.position().y()))};
}

} // namespace

void CCelView::mousePressEvent(QMouseEvent* event) {
    m_pointer = PointOf(*event);
    m_opensMenu = event->buttons() == Qt::RightButton && !m_drag && m_pick == CelPick::Nothing;
    if (event->button() == Qt::RightButton) {
        CancelDrag();
        CancelPick();
        return;
    }
    const bool isLeft = event->button() == Qt::LeftButton;
    if (!HasImage() || m_drag || event->buttons().testFlag(Qt::RightButton) ||
        (!isLeft && event->button() != Qt::MiddleButton) || (isLeft && m_pick != CelPick::Nothing))
        return;
    const bool pans = !isLeft || m_panMode || m_isSpaceHeld;
    if (!pans && !m_doc.Painting().Begin(m_tool, Mapping().ViewToBuffer(*m_pointer)))
        return;
    m_fit.reset();
    m_drag = CDrag{pans, event->button(), *m_pointer, *m_pointer};
    RefreshCursor();
    RefreshOverlay();
}

void CCelView::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event); // two quick dots are two dots
}

void CCelView::mouseMoveEvent(QMouseEvent* event) {
    m_pointer = PointOf(*event);
    if (m_drag && !event->buttons().testFlag(m_drag->button))
        CancelDrag(); // the release went elsewhere
    if (m_drag)
        ContinueDrag(*m_pointer);
    RefreshOverlay();
}

void CCelView::ContinueDrag(CPoint point) {
    const CPoint last = std::exchange(m_drag->last, point);
    if (m_drag->pans) {
        ScrollTo(
            {horizontalScrollBar()->value() + last.x - point.x, verticalScrollBar()->value() + last.y - point.y});
    } else {
        ShowResult(m_doc.Painting().Move(Mapping().ViewToBuffer(point)));
    }
}

void CCelView::mouseReleaseEvent(QMouseEvent* event) {
    m_pointer = PointOf(*event);
    if (event->button() == Qt::LeftButton && m_pick != CelPick::Nothing) {
        FinishPick(*m_pointer);
    } else if (m_drag && event->button() == m_drag->button) {
        if (m_drag->pans || event->buttons().testFlag(Qt::RightButton))
            CancelDrag();
        else
            FinishDrag(*m_pointer);
    } else if (event->button() == Qt::RightButton && std::exchange(m_opensMenu, false) && m_menu) {
        m_menu->popup(event->globalPosition().toPoint());
    }
    RefreshOverlay();
}

void CCelView::SetContextMenu(QMenu* menu) {
    m_menu = menu;
}

void CCelView::contextMenuEvent(QContextMenuEvent* event) {
    // Of the mouse, whose press may yet be a stroke given up, its release tells.
    if (event->reason() != QContextMenuEvent::Mouse && m_menu && !m_drag)
        m_menu->popup(event->globalPos());
}

void CCelView::FinishDrag(CPoint point) {
    if (!HasImage()) {
        CancelDrag();
        if (m_tool == CelTool::Bucket)
            m_prompter.ShowMessage("Internal Error : m_CelImg or pDoc is NULL in BUCKETFILL");
        return;
    }
    CPaintResult result;
    {
        const bool isStroke = m_doc.Painting().Form() == ToolForm::Stroke;
        const std::shared_ptr<void> wait = isStroke ? nullptr : m_prompter.BeginWait();
        result = m_doc.Painting().End(Mapping().ViewToBuffer(point));
    }
    CancelDrag();
    ShowResult(result);
}

void CCelView::CancelDrag() {
    if (!m_drag)
        return;
    m_doc.Painting().Cancel();
    m_drag.reset();
    RefreshCursor();
    RefreshOverlay();
}

void CCelView::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        const CZoomLevel zoom = m_wheel.ZoomAfter(*event, m_zoom);
        if (zoom != m_zoom)
            ZoomAbout(PointOf(*event), zoom);
        return;
    }
    m_fit.reset();
    const CPoint turn = m_wheel.PixelsOf(*event);
    ScrollTo({horizontalScrollBar()->value() - turn.x, verticalScrollBar()->value() - turn.y});
}

bool CCelView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) {
        m_pointer.reset();
        RefreshOverlay();
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void CCelView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && (m_drag || m_pick != CelPick::Nothing)) {
        CancelDrag();
        CancelPick();
    } else if (event->key() == Qt::Key_Space) {
        m_isSpaceHeld = true;
        RefreshCursor();
        RefreshOverlay();
    } else {
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void CCelView::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space) {
        QAbstractScrollArea::keyReleaseEvent(event);
    } else if (!event->isAutoRepeat()) {
        m_isSpaceHeld = false;
        RefreshCursor();
        RefreshOverlay();
    }
}

void CCelView::focusOutEvent(QFocusEvent* event) {
    m_isSpaceHeld = false;
    RefreshCursor();
    RefreshOverlay();
    QAbstractScrollArea::focusOutEvent(event);
}

} // namespace velmor
