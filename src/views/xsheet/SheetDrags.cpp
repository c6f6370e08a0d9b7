#include "views/xsheet/SheetDrags.h"

#include "scene/AssetOperations.h"
#include "scene/CameraOperations.h"
#include "scene/CellOperations.h"
#include "scene/SceneModel.h"
#include "scene/SoundOperations.h"
#include "scene/VelmorltDoc.h"
#include "scene/preview/Scrubbing.h"
#include "scene/sheet/SheetDisplay.h"
#include "views/xsheet/XSheetToolTips.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QToolTip>
#include <QWidget>
#include <algorithm>

namespace velmor {

CSheetDrags::CSheetDrags(CVelmorltDoc& doc, ISheetSurface& surface, const CXSheetSounds& sounds, QWidget& viewport)
    : m_doc(doc),
      m_surface(surface),
      m_sounds(sounds),
      m_viewport(viewport),
      m_mouse(doc),
      m_grip(doc),
      m_levelDrag(doc) {
    QObject::connect(&m_scrollTimer, &QTimer::timeout, &m_scrollTimer, [this] { ScrollOn(); });
}

void CSheetDrags::PointAt(const CPointerLook& pointer) {
    if (m_pointer == pointer)
        return;
    m_pointer = pointer;
    m_surface.Refresh();
}

void CSheetDrags::ShowHotButton(QPoint point, bool pressed) {
    const CXSheetGeometry& geometry = Geometry();
    const bool inRow = point.y() >= 0 && point.y() < geometry.buttonSize;
    const std::optional<CHeaderHit> hit = inRow || pressed ? geometry.HeaderButtonAt(point.x()) : std::nullopt;
    const bool pointsAtGrip = !IsBusy() && m_doc.Model().sceneOpen && geometry.GridArea().contains(point);
    const auto grip = pointsAtGrip ? GripNear(m_doc.Model(), geometry, point) : std::nullopt;
    m_viewport.setCursor(grip ? ShapeOver(*grip, geometry, point) : Qt::ArrowCursor);
    PointAt({hit, pressed && hit, std::nullopt, grip ? std::optional(LookOf(*grip, geometry)) : std::nullopt, {}});
}

void CSheetDrags::Press(const QMouseEvent& event) {
    if (!PressHeader(event) && !m_grip.Press(Geometry(), event.position().toPoint()))
        PressSheet(event);
    m_surface.Refresh();
}

// A folded level opens at a click on its number; with Ctrl levels are taken by their names.
bool CSheetDrags::PressHeader(const QMouseEvent& event) {
    const QPoint point = event.position().toPoint();
    const std::optional<int> level = Geometry().LevelAt(point);
    if (level && point.y() < Geometry().buttonSize && Geometry().IsFolded(*level)) {
        m_doc.SheetDisplay().Fold(*level, *level, false);
        return true;
    }
    return event.modifiers().testFlag(Qt::ControlModifier) && m_levelDrag.Press(Geometry(), point);
}

void CSheetDrags::PressSheet(const QMouseEvent& event) {
    const QPoint point = event.position().toPoint();
    if (Scrubs(event)) {
        m_isScrubbing = true;
        return ScrubTo(point);
    }
    if (event.modifiers().testFlag(Qt::ControlModifier) &&
        m_soundDrag.Begin(m_sounds, Geometry(), point, event.modifiers().testFlag(Qt::ShiftModifier))) {
        m_viewport.setCursor(Qt::SizeVerCursor);
        return DragSound(point);
    }
    m_mouse.Press(Geometry(), point, event.modifiers().testFlag(Qt::ShiftModifier));
    if (m_mouse.IsButtonPressed())
        ShowHotButton(point, true);
}

void CSheetDrags::Move(const QMouseEvent& event) {
    const QPoint point = event.position().toPoint();
    const bool isDown = event.buttons().testFlag(Qt::LeftButton);
    // A release is seen nowhere when it comes over a message for instance.
    if (m_isScrubbing)
        return isDown ? ScrubTo(point) : EndScrubbing();
    if (m_soundDrag.IsActive())
        return isDown ? DragSound(point) : LetSoundGo();
    if (IsBusy() && !isDown) {
        m_mouse.Cancel();
        EndPart(false);
        EndDrag();
    }
    if (m_levelDrag.IsDragging())
        DragLevels(point);
    else if (m_grip.IsDragging())
        DragGrip(point, event.modifiers());
    else if (m_mouse.IsSelecting())
        DragSelection(point, true);
    else
        ShowHotButton(point, m_mouse.IsButtonPressed());
}

void CSheetDrags::Release(const QMouseEvent& event) {
    if (m_isScrubbing)
        EndScrubbing();
    if (m_soundDrag.IsActive())
        return DropSound();
    const QPoint point = event.position().toPoint();
    if (HoldsPart()) {
        EndPart(true);
        return ShowHotButton(point, false);
    }
    if (!m_mouse.IsPressed())
        return;
    const bool selected = m_mouse.IsSelecting();
    EndDrag();
    ShowHotButton(point, false);
    m_mouse.Release(Geometry(), point);
    if (selected && m_selectionChanged)
        m_selectionChanged();
}

void CSheetDrags::DoubleClick(const QMouseEvent& event) {
    PressSheet(event);
    m_surface.Refresh();
    if (m_mouse.IsSelecting())
        Open(event.position().toPoint(), event.modifiers());
}

void CSheetDrags::Open(QPoint point, Qt::KeyboardModifiers keys) {
    if (const std::optional<int> level = Geometry().LevelAt(point); level && m_mouse.IsSelectingColumns()) {
        m_mouse.Cancel();
        m_doc.SheetDisplay().Fold(*level, *level, !Geometry().IsFolded(*level));
        return;
    }
    const bool onCell = Geometry().CellAt(point).has_value();
    const bool onCamera = Geometry().CameraFrameAt(point).has_value();
    if (!onCell && !onCamera)
        return;
    // The release goes to the dialog, or comes when it is closed.
    m_mouse.Cancel();
    if (onCell && keys.testFlag(Qt::ControlModifier))
        m_doc.Assets().EditDrawing(m_doc.Model().CursorCell());
    else if (onCell)
        m_doc.Cells().EditCellData();
    else
        m_doc.Camera().EditCameraData();
}

void CSheetDrags::KeepScrolling(bool scrolls) {
    if (!scrolls)
        m_scrollTimer.stop();
    else if (!m_scrollTimer.isActive())
        m_scrollTimer.start(scrollIntervalMs);
}

void CSheetDrags::ScrollBy(int levels, int frames) {
    m_surface.ScrollTo(Geometry().firstLevel + levels, Geometry().firstFrame + frames);
}

void CSheetDrags::ScrollOn() {
    if (m_isScrubbing) {
        ScrubTo(m_dragPoint);
    } else if (m_soundDrag.IsActive()) {
        ScrollBy(0, SoundScroll());
        DragSound(m_dragPoint);
    } else if (m_levelDrag.IsDragging()) {
        DragLevels(m_dragPoint);
    } else if (m_grip.IsDragging()) {
        DragGrip(m_dragPoint, QGuiApplication::keyboardModifiers());
    } else if (m_mouse.IsSelecting()) {
        DragSelection(m_dragPoint, false);
    } else {
        const QPoint steps = Geometry().DropScroll(m_dragPoint);
        ScrollBy(steps.x(), steps.y());
        DragAssets(m_dragPoint);
    }
}

bool CSheetDrags::Scrubs(const QMouseEvent& press) const {
    const QPoint point = press.position().toPoint();
    return point.x() < Geometry().frameColumnWidth && point.y() >= Geometry().headerHeight &&
           Geometry().frameCount > 0 && !press.modifiers().testFlag(Qt::ShiftModifier) &&
           press.modifiers().testFlag(Qt::ControlModifier) != m_doc.Scrubbing().IsByColumn();
}

void CSheetDrags::ScrubTo(QPoint point) {
    m_dragPoint = point;
    const int steps = Geometry().SelectionScroll({Geometry().frameColumnWidth, point.y()}).y();
    KeepScrolling(steps != 0);
    ScrollBy(0, steps);
    m_doc.Scrubbing().To(Geometry().YToFrame(point.y()));
}

void CSheetDrags::EndScrubbing() {
    m_isScrubbing = false;
    m_scrollTimer.stop();
    m_doc.Scrubbing().End();
}

void CSheetDrags::DragSelection(QPoint point, bool mouseMoved) {
    m_dragPoint = point;
    m_mouse.Drag(Geometry(), point);
    QPoint steps = Geometry().SelectionScroll(point);
    // Whole columns are selected from a place where frames scroll; only a mouse that moves has them do so.
    if (m_mouse.IsSelectingColumns() && !mouseMoved)
        steps.setY(0);
    KeepScrolling(!steps.isNull());
    ScrollBy(steps.x(), steps.y());
    m_surface.Refresh();
}

void CSheetDrags::DragGrip(QPoint point, Qt::KeyboardModifiers keys) {
    m_dragPoint = point;
    m_grip.Drag(Geometry(), point, keys);
    const int steps = Geometry().SelectionScroll(point).y();
    KeepScrolling(steps != 0);
    ScrollBy(0, steps);
    m_surface.Refresh();
}

void CSheetDrags::DragLevels(QPoint point) {
    m_dragPoint = point;
    m_levelDrag.Drag(Geometry(), point);
    const int steps = Geometry().DropScroll({point.x(), Geometry().GridArea().center().y()}).x();
    KeepScrolling(steps != 0);
    ScrollBy(steps, 0);
    CPointerLook pointer;
    pointer.levelTarget = m_levelDrag.Target();
    PointAt(pointer);
}

void CSheetDrags::EndPart(bool released) {
    if (m_grip.IsDragging())
        LetGo(m_grip, released);
    if (m_levelDrag.IsDragging()) {
        PointAt({});
        LetGo(m_levelDrag, released);
    }
}

template<typename TDrag>
void CSheetDrags::LetGo(TDrag& drag, bool released) {
    m_scrollTimer.stop();
    if (!released)
        drag.Cancel();
    else if (const std::optional<QPoint> clicked = drag.Release()) {
        // What is not dragged is clicked on: the cell under a handle, the level of a name.
        m_mouse.Press(Geometry(), *clicked, false);
        m_mouse.Release(Geometry(), *clicked);
    }
    m_surface.ShowMovedCursor();
    m_surface.Refresh();
    if (released && m_selectionChanged)
        m_selectionChanged();
}

void CSheetDrags::DragSound(QPoint point) {
    m_dragPoint = point;
    m_soundDrag.Move(Geometry(), point);
    KeepScrolling(SoundScroll() != 0);
    PointAt({std::nullopt, false, m_soundDrag.Mark()});
    QToolTip::showText(m_viewport.mapToGlobal(point), SoundDragText(m_soundDrag), &m_viewport);
}

int CSheetDrags::SoundScroll() const {
    return Geometry().DropScroll({Geometry().GridArea().center().x(), m_dragPoint.y()}).y();
}

void CSheetDrags::LetSoundGo() {
    m_soundDrag.End();
    m_viewport.unsetCursor();
    QToolTip::hideText();
    EndDrag();
}

void CSheetDrags::DropSound() {
    LetSoundGo();
    if (m_soundDrag.Grip() == SoundGrip::Whole)
        m_doc.Sounds().MoveSound(m_soundDrag.From(), m_soundDrag.Placed().frame);
    else
        m_doc.Sounds().ShapeSound(m_soundDrag.From(), m_soundDrag.Placed());
}

void CSheetDrags::DragAssets(QPoint point) {
    m_dragPoint = point;
    KeepScrolling(!Geometry().DropScroll(point).isNull());
    PointAt({std::nullopt, false, DropMarkAt(point)});
}

std::optional<CDropMark> CSheetDrags::DropMarkAt(QPoint point) const {
    const CXSheetGeometry& geometry = Geometry();
    const CSceneModel& model = m_doc.Model();
    if (model.sourceMode == SourceMode::Sounds) {
        const auto frame = point.y() >= geometry.headerHeight ? geometry.DropFrame(point.y()) : std::nullopt;
        return frame ? std::optional(CDropMark{{0, *frame}, 1, true}) : std::nullopt;
    }
    const std::optional<CSheetCell> cell = geometry.CellAt(point);
    if (!cell)
        return std::nullopt;
    const int assets = std::max(1, static_cast<int>(model.sourceSelection.size()));
    return CDropMark{*cell, std::min(assets, geometry.frameCount - cell->frame), false};
}

void CSheetDrags::EndDrag() {
    m_scrollTimer.stop();
    m_pointer.drop.reset();
    m_surface.Refresh();
}

} // namespace velmor
