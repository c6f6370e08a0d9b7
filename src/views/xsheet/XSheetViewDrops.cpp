// The part of the xsheet view that takes assets dragged from the source view.

#include "scene/SceneModel.h"
#include "scene/SoundOperations.h"
#include "scene/VelmorltDoc.h"
#include "scene/XSheetOperations.h"
#include "views/source/SourceView.h"
#include "views/xsheet/XSheetStyle.h"
#include "views/xsheet/XSheetView.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTimer>

namespace velmor {

void CXSheetView::DropCels(const QPoint& screenPoint) {
    if (const auto cell = m_geometry.DropTarget(viewport()->mapFromGlobal(screenPoint)))
        m_doc.XSheet().AskAndDropCels(*cell, {screenPoint.x(), screenPoint.y()});
}

void CXSheetView::DropSounds(const QPoint& screenPoint) {
    if (const auto frame = m_geometry.DropFrame(viewport()->mapFromGlobal(screenPoint).y()))
        m_doc.Sounds().DropSound(*frame);
}

void CXSheetView::dragEnterEvent(QDragEnterEvent* event) {
    if (m_look.sceneOpen && event->mimeData()->hasFormat(CSourceView::dragType))
        event->acceptProposedAction();
}

void CXSheetView::dragMoveEvent(QDragMoveEvent* event) {
    DragAssets(event->position().toPoint());
    event->setAccepted(m_pointer.drop.has_value());
}

void CXSheetView::DragAssets(QPoint point) {
    m_dragPoint = point;
    KeepScrolling(!m_geometry.DropScroll(point).isNull());
    PointAt({std::nullopt, false, DropMarkAt(point)});
}

void CXSheetView::ScrollUnderAssets() {
    const QPoint steps = m_geometry.DropScroll(m_dragPoint);
    ScrollTo(m_geometry.firstLevel + steps.x(), m_geometry.firstFrame + steps.y());
    DragAssets(m_dragPoint);
}

std::optional<CDropMark> CXSheetView::DropMarkAt(QPoint point) const {
    const CSceneModel& model = m_doc.Model();
    if (model.sourceMode == SourceMode::Sounds) {
        const auto frame = point.y() >= m_geometry.headerHeight ? m_geometry.DropFrame(point.y()) : std::nullopt;
        return frame ? std::optional(CDropMark{{0, *frame}, 1, true}) : std::nullopt;
    }
    const std::optional<CSheetCell> cell = m_geometry.CellAt(point);
    if (!cell)
        return std::nullopt;
    const int assets = std::max(1, static_cast<int>(model.sourceSelection.size()));
    return CDropMark{*cell, std::min(assets, m_geometry.frameCount - cell->frame), false};
}

void CXSheetView::dragLeaveEvent(QDragLeaveEvent*) {
    EndDrag();
}

void CXSheetView::dropEvent(QDropEvent* event) {
    EndDrag();
    if (!event->mimeData()->hasFormat(CSourceView::dragType))
        return;
    event->acceptProposedAction();
    const QPoint screenPoint = viewport()->mapToGlobal(event->position().toPoint());
    const bool sounds = m_doc.Model().sourceMode == SourceMode::Sounds;
    // A dialog must not open before the drag has ended, which holds the mouse until then.
    QTimer::singleShot(0, this, [this, screenPoint, sounds] {
        if (sounds)
            DropSounds(screenPoint);
        else
            DropCels(screenPoint);
    });
}

} // namespace velmor
