#include "views/xsheet/OtherSheetView.h"

#include "scene/SceneModel.h"
#include "scene/sheet/OtherSheet.h"
#include "scene/sheet/SheetDisplay.h"
#include "views/xsheet/SheetGlance.h"
#include "views/xsheet/XSheetMouse.h"
#include "views/xsheet/XSheetPainter.h"
#include "views/xsheet/XSheetStyle.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>
#include <tuple>

namespace velmor {

COtherSheetView::COtherSheetView(COtherSheet& sheet, const CSheetDisplay& display, QWidget* parent)
    : QAbstractScrollArea(parent), m_sheet(sheet), m_display(display) {
    setObjectName("other sheet");
    setAccessibleName("XSheet of another scene");
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    Follow();
}

COtherSheetView::~COtherSheetView() = default;

void COtherSheetView::Follow() {
    SetScrolls();
    viewport()->update();
}

void COtherSheetView::SetScrolls() {
    const CSceneModel& other = m_sheet.Model();
    m_geometry.client = viewport()->size();
    m_geometry.levelCount = other.sceneOpen ? other.Scene().xsheet.LevelCount() : 0;
    m_geometry.frameCount = other.sceneOpen ? other.Scene().xsheet.FrameCount() : 0;
    m_geometry.ClampScroll();
    for (auto [bar, page, most, value] : {std::tuple(verticalScrollBar(), m_geometry.VisibleFrames(),
                                                     m_geometry.MostFirstFrame(), m_geometry.firstFrame),
                                          std::tuple(horizontalScrollBar(), m_geometry.VisibleLevels(),
                                                     m_geometry.MostFirstLevel(), m_geometry.firstLevel)}) {
        const QSignalBlocker blocker(bar);
        bar->setPageStep(std::max(1, page));
        bar->setRange(0, most);
        bar->setValue(value);
    }
}

void COtherSheetView::Show(CSheetCell cell) {
    m_geometry = m_geometry.Showing(cell);
    Follow();
}

void COtherSheetView::scrollContentsBy(int, int) {
    m_geometry.firstLevel = horizontalScrollBar()->value();
    m_geometry.firstFrame = verticalScrollBar()->value();
    m_geometry.ClampScroll();
    viewport()->update();
}

void COtherSheetView::resizeEvent(QResizeEvent*) {
    SetScrolls();
}

void COtherSheetView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        m_style.reset();
        viewport()->update();
    }
}

void COtherSheetView::focusInEvent(QFocusEvent*) {
    viewport()->update();
}

void COtherSheetView::focusOutEvent(QFocusEvent*) {
    viewport()->update();
}

void COtherSheetView::paintEvent(QPaintEvent* event) {
    if (!m_style || m_style->Scale() != devicePixelRatioF())
        m_style = std::make_unique<CXSheetStyle>(palette(), devicePixelRatioF());
    const CSceneModel& other = m_sheet.Model();
    CXSheetLook look = LookAt(other, m_noSounds, m_geometry, {});
    look.focused = hasFocus();
    AddGlance(look, other.Scene(), {m_display.ColorsFolders(), m_display.DrawsHolds(), {}});
    QPainter painter(viewport());
    CXSheetPainter(painter, look, *m_style).Paint(event->region());
}

void COtherSheetView::mousePressEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    const std::optional<CSheetCell> cell = m_geometry.CellAt(point);
    if (event->button() != Qt::LeftButton || !cell)
        return event->ignore();
    m_sheet.Select(*cell, event->modifiers().testFlag(Qt::ShiftModifier));
    viewport()->update();
}

void COtherSheetView::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton) || !m_sheet.Model().sceneOpen)
        return;
    const CSheetCell cell = m_geometry.NearestCell(event->position().toPoint());
    m_sheet.Select(cell, true);
    Show(cell);
}

// Copying is for the view that has the focus, before the window's own copying.
bool COtherSheetView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        event->accept();
        return true;
    }
    return QAbstractScrollArea::event(event);
}

void COtherSheetView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        return m_sheet.Copy();
    const bool extend = event->modifiers().testFlag(Qt::ShiftModifier);
    const std::optional<CSheetCell> cell =
        m_sheet.Model().sceneOpen ? CursorAfterKey(event->key(), m_sheet.Model().CursorCell(), m_geometry)
                                  : std::nullopt;
    if (!cell)
        return event->ignore();
    m_sheet.Select(*cell, extend);
    Show(*cell);
}

} // namespace velmor
