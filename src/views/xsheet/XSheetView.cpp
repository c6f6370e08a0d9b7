#include "views/xsheet/XSheetView.h"

#include "scene/SceneModel.h"
#include "scene/SoundOperations.h"
#include "scene/VelmorltDoc.h"
#include "scene/XSheetOperations.h"
#include "scene/exposing/SheetTiming.h"
#include "scene/preview/ScenePreview.h"
#include "scene/sheet/SheetDisplay.h"
#include "views/source/SourceView.h"
#include "views/xsheet/XSheetPainter.h"
#include "views/xsheet/XSheetStyle.h"
#include "views/xsheet/XSheetToolTips.h"

#include <QDropEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

namespace velmor {

namespace {

constexpr int wheelStep = 120; ///< of angle delta for one notch
constexpr UpdateHint shownHints =
    UpdateHint::CameraRedraw | UpdateHint::Cells | UpdateHint::Levels | UpdateHint::AssetLists;

/// Of a cell, by the zoom of the sheet. The pictures of a frame of 4:3 fit.
constexpr std::array<QSize, CSheetDisplay::mostZoom + 1> cellSizes = {QSize(80, 20), QSize(80, 48), QSize(80, 74),
                                                                      QSize(124, 108)};

// Whole notches of a wheel; what is not whole yet waits for its next turn.
int TakeNotches(int& angle, int turned) {
    angle += turned;
    const int notches = angle / wheelStep;
    angle -= notches * wheelStep;
    return notches;
}

} // namespace

CXSheetView::CXSheetView(CVelmorltDoc& doc, IPrompter& prompter, QWidget* parent)
    : QAbstractScrollArea(parent),
      m_doc(doc),
      m_prompter(prompter),
      m_waves([this] { Refresh(); }),
      m_drags(doc, *this, m_sounds, *viewport()),
      m_thumbnails(qGuiApp->devicePixelRatio()),
      m_pictures(qGuiApp->devicePixelRatio(), [this] { Refresh(); }),
      m_typing(doc, *this, m_thumbnails) {
    setObjectName("xsheet");
    setAccessibleName("XSheet");
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    m_doc.Views().Add(*this);
    OnUpdate(everythingHint);
}

CXSheetView::~CXSheetView() {
    m_doc.Views().Remove(*this);
}

void CXSheetView::OnUpdate(UpdateHint hint) {
    if (Holds(hint, UpdateHint::Preview)) {
        ShowPlayedFrame();
        Refresh();
    }
    if (!Holds(hint, shownHints))
        return;
    const CSceneModel& model = m_doc.Model();
    m_sounds.Update(model, Holds(hint, UpdateHint::AssetLists));
    m_pictures.Recheck();
    m_typing.Follow();
    SetScrolls();
    const std::string scene = model.databaseFolder + model.sceneName;
    if (m_scene != scene) {
        m_scene = scene;
        ScrollTo(0, 0);
    }
    ShowMovedCursor();
    Refresh();
}

bool CXSheetView::SetCellSizes() {
    const QSize cell = cellSizes[static_cast<std::size_t>(m_doc.SheetDisplay().Zoom())];
    const bool isZoomed = cell.height() != m_geometry.rowHeight;
    m_geometry.levelWidth = cell.width();
    m_geometry.rowHeight = cell.height();
    m_geometry.folded = m_doc.SheetDisplay().Folded();
    m_pictures.SetSize(m_geometry.PictureRect({{0, 0}, cell}).size());
    if (isZoomed)
        m_geometry = m_geometry.Showing(m_shownCursor);
    return isZoomed;
}

void CXSheetView::ZoomAt(int y, int by) {
    const int frame = m_geometry.YToFrame(y);
    m_doc.SheetDisplay().SetZoom(m_doc.SheetDisplay().Zoom() + by);
    ScrollTo(m_geometry.firstLevel, frame - std::max(0, y - m_geometry.headerHeight) / m_geometry.rowHeight);
}

void CXSheetView::SetScrolls() {
    const CSceneModel& model = m_doc.Model();
    m_geometry.client = viewport()->size();
    m_geometry.levelCount = model.sceneOpen ? model.Scene().xsheet.LevelCount() : 0;
    m_geometry.frameCount = model.sceneOpen ? model.Scene().xsheet.FrameCount() : 0;
    const bool isZoomed = SetCellSizes();
    // A bar that clamps its value scrolls by itself.
    verticalScrollBar()->setPageStep(std::max(1, m_geometry.VisibleFrames()));
    verticalScrollBar()->setRange(0, m_geometry.MostFirstFrame());
    horizontalScrollBar()->setPageStep(std::max(1, m_geometry.VisibleLevels()));
    horizontalScrollBar()->setRange(0, m_geometry.MostFirstLevel());
    if (isZoomed)
        ScrollTo(m_geometry.firstLevel, m_geometry.firstFrame);
}

void CXSheetView::ScrollTo(int firstLevel, int firstFrame) {
    CXSheetGeometry scrolled = m_geometry;
    scrolled.firstLevel = firstLevel;
    scrolled.firstFrame = firstFrame;
    scrolled.ClampScroll();
    if (scrolled != m_geometry)
        MovePainted(scrolled);
    // One bar after the other: in between, what they say together is nobody's wish.
    const QSignalBlocker horizontal(horizontalScrollBar());
    const QSignalBlocker vertical(verticalScrollBar());
    horizontalScrollBar()->setValue(m_geometry.firstLevel);
    verticalScrollBar()->setValue(m_geometry.firstFrame);
}

void CXSheetView::MovePainted(const CXSheetGeometry& scrolled) {
    // What is on the screen must be up to date, or due to be painted, before it is moved.
    Refresh();
    const int levels = m_geometry.firstLevel - scrolled.firstLevel;
    const int frames = m_geometry.firstFrame - scrolled.firstFrame;
    const int moved = m_geometry.frameColumnWidth - m_geometry.ColumnX(scrolled.firstLevel);
    m_geometry = scrolled;
    const double scale = devicePixelRatioF();
    if ((levels != 0 && frames != 0) || scale != std::floor(scale)) {
        Refresh();
        return;
    }
    const QRect grid = m_geometry.GridArea();
    if (frames != 0)
        viewport()->scroll(0, frames * m_geometry.rowHeight, {0, grid.y(), viewport()->width(), grid.height()});
    else
        viewport()->scroll(moved, 0, {grid.x(), 0, grid.width(), viewport()->height()});
    m_look = Look();
}

void CXSheetView::ShowMovedCursor() {
    const CSceneModel& model = m_doc.Model();
    const CSheetCell cursor{model.cursorLevel, model.cursorFrame};
    const bool moved = m_shownCursor != cursor;
    m_shownCursor = cursor;
    if (moved)
        TellNote();
    // Under the mouse the sheet stands still.
    if (!moved || m_drags.IsBusy() || !model.sceneOpen)
        return;
    const CXSheetGeometry shown = m_geometry.Showing(cursor);
    ScrollTo(shown.firstLevel, shown.firstFrame);
}

// The status bar has what is noted at the cursor, until it goes on.
void CXSheetView::TellNote() {
    const std::string note = m_doc.Model().sceneOpen ? NoteStatus(m_doc.Model()) : std::string();
    if (!note.empty() || m_tellsNote)
        m_prompter.ShowStatus(note);
    m_tellsNote = !note.empty();
}

void CXSheetView::ShowPlayedFrame() {
    const std::optional<int> frame = m_doc.Preview().Frame();
    const bool hasEnded = std::exchange(m_showsPlay, frame.has_value()) && !frame;
    if (hasEnded && m_doc.Model().sceneOpen && !m_drags.IsBusy())
        ScrollTo(m_geometry.firstLevel, m_geometry.Showing(m_shownCursor).firstFrame); // back to the cursor
    if (!frame || m_drags.IsBusy())
        return;
    const int rows = std::max(1, m_geometry.VisibleFrames());
    if (*frame < m_geometry.firstFrame || *frame >= m_geometry.firstFrame + rows)
        ScrollTo(m_geometry.firstLevel, *frame);
}

void CXSheetView::ShowSoundWaves(bool shown) {
    m_sounds.ShowWaves(shown ? &m_waves : nullptr);
    Refresh();
}

CXSheetLook CXSheetView::Look() {
    CScenePreview& preview = m_doc.Preview();
    CPlayLook play{preview.Frame(), {}};
    if (preview.HoldsFrames())
        play.ready = [&preview](int frame) { return preview.IsReady(frame); };
    const CScene* outcome = m_doc.Timing().Outcome();
    CXSheetLook look = LookAt(m_doc.Model(), m_sounds, m_geometry, m_drags.Pointer(), play, outcome);
    AddGlance(look, outcome != nullptr ? *outcome : m_doc.Model().Scene(), Glance());
    look.focused = hasFocus();
    look.entry = m_typing.Look();
    return look;
}

CSheetGlance CXSheetView::Glance() {
    const CSheetDisplay& display = m_doc.SheetDisplay();
    CSheetGlance glance{display.ColorsFolders(), display.DrawsHolds(), {}};
    if (display.Zoom() > 0)
        glance.picture = [this, folder = m_doc.Model().Paths().SceneFolder()](const CXSheetCell& cell) {
            return m_pictures.Find(AssetFilePath(folder, cell.FolderName(), cell.CelName()));
        };
    return glance;
}

void CXSheetView::Refresh() {
    CXSheetLook look = Look();
    if (const QRegion changed = Difference(m_look, look); !changed.isEmpty())
        viewport()->update(changed);
    m_look = std::move(look);
    m_typing.PlaceChooser(m_geometry);
}

// While a line is typed, and when one is begun, its keys are no commands.
bool CXSheetView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        const bool endsDrag = m_drags.HoldsPart() && key.key() == Qt::Key_Escape;
        if (endsDrag || (m_look.sceneOpen && !m_drags.IsBusy() && m_typing.Takes(key))) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void CXSheetView::paintEvent(QPaintEvent* event) {
    if (!m_style || m_style->Scale() != devicePixelRatioF())
        m_style = std::make_unique<CXSheetStyle>(palette(), devicePixelRatioF());
    QPainter painter(viewport());
    CXSheetPainter(painter, m_look, *m_style).Paint(event->region());
}

void CXSheetView::resizeEvent(QResizeEvent*) {
    SetScrolls();
    ShowMovedCursor();
    Refresh();
}

void CXSheetView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        m_style.reset();
        viewport()->update();
    }
}

void CXSheetView::focusInEvent(QFocusEvent*) {
    Refresh();
}

void CXSheetView::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason)
        m_typing.GiveUp();
    m_drags.GiveUp();
    Refresh();
}

void CXSheetView::scrollContentsBy(int, int) {
    ScrollTo(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

bool CXSheetView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QString text = SheetToolTip(m_doc.Model(), m_geometry, m_sounds, m_thumbnails, help->pos());
        if (text.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), text, viewport());
        return true;
    }
    if (event->type() == QEvent::Leave)
        m_drags.PointAway();
    return QAbstractScrollArea::viewportEvent(event);
}

void CXSheetView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_look.sceneOpen)
        return event->ignore();
    m_typing.GiveUp();
    m_drags.Press(*event);
}

void CXSheetView::mouseMoveEvent(QMouseEvent* event) {
    m_drags.Move(*event);
}

void CXSheetView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        m_drags.Release(*event);
}

void CXSheetView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_look.sceneOpen)
        return event->ignore();
    m_typing.GiveUp();
    m_drags.DoubleClick(*event);
}

void CXSheetView::wheelEvent(QWheelEvent* event) {
    const QPoint angle = event->angleDelta();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        if (const int steps = TakeNotches(m_zoomWheel, angle.y()); steps != 0)
            ZoomAt(event->position().toPoint().y(), steps);
        event->accept();
        return;
    }
    const bool sideways = std::abs(angle.x()) > std::abs(angle.y());
    if (!sideways && !event->modifiers().testFlag(Qt::ShiftModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    const int levels = TakeNotches(m_levelWheel, sideways ? angle.x() : angle.y());
    ScrollTo(m_geometry.firstLevel - levels, m_geometry.firstFrame);
    event->accept();
}

void CXSheetView::SetContextMenus(const CSheetMenus& menus) {
    std::ranges::copy(menus, m_menus.begin());
}

QMenu* CXSheetView::MenuAt(QPoint point) const {
    if (m_geometry.CellAt(point))
        return m_menus[0];
    if (point.y() < m_geometry.headerHeight && m_geometry.LevelAt(point))
        return m_menus[1];
    if (m_geometry.SoundFrameAt(point))
        return m_menus[3];
    return m_geometry.CameraFrameAt(point) ? m_menus[2] : nullptr;
}

void CXSheetView::contextMenuEvent(QContextMenuEvent* event) {
    if (!m_look.sceneOpen || m_drags.IsBusy())
        return;
    m_typing.GiveUp();
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint point = byKey ? m_geometry.CellRect(m_shownCursor).center() : event->pos();
    QMenu* menu = byKey ? m_menus[0].data() : MenuAt(point);
    if (menu == nullptr)
        return;
    if (!byKey)
        SelectForMenu(m_doc, m_geometry, point);
    Refresh();
    const QRect seen = viewport()->rect();
    menu->popup(viewport()->mapToGlobal(QPoint(std::clamp(point.x(), seen.left(), seen.right()),
                                               std::clamp(point.y(), seen.top(), seen.bottom()))));
}

void CXSheetView::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool extend = modifiers == Qt::ShiftModifier;
    if (m_drags.HoldsSound()) {
        if (event->key() == Qt::Key_Escape)
            m_drags.LetSoundGo();
        return;
    }
    event->ignore();
    if (event->key() == Qt::Key_Escape)
        m_drags.GiveUp();
    if (m_look.sceneOpen && !m_drags.IsBusy() && m_typing.Press(*event)) {
        event->accept();
        const CXSheetGeometry shown = m_geometry.Showing(m_shownCursor);
        ScrollTo(shown.firstLevel, shown.firstFrame);
        Refresh();
        return;
    }
    if (!m_look.sceneOpen || m_drags.IsBusy() || (modifiers != Qt::NoModifier && !extend))
        return;
    if (!extend && (PlayByKey(*event) || EnterCell(*event))) {
        event->accept();
        return;
    }
    if (CursorAfterKey(event->key(), m_shownCursor, m_geometry)) {
        event->accept();
        m_doc.Preview().Stop(); // and goes on from there
        MoveCursor(m_doc, *CursorAfterKey(event->key(), m_shownCursor, m_geometry), extend);
    }
}

bool CXSheetView::PlayByKey(const QKeyEvent& key) {
    if (key.key() == Qt::Key_Escape && m_doc.Preview().IsPlaying()) {
        m_doc.Preview().GoBack();
        return true;
    }
    if (key.key() != Qt::Key_Space || !m_spacePressed)
        return false;
    if (!key.isAutoRepeat())
        m_spacePressed();
    return true;
}

bool CXSheetView::EnterCell(const QKeyEvent& key) {
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (!isEnter || !m_enterPressed)
        return false;
    if (!key.isAutoRepeat())
        m_enterPressed();
    return true;
}

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
    m_drags.DragAssets(event->position().toPoint());
    event->setAccepted(m_drags.Pointer().drop.has_value());
}

void CXSheetView::dragLeaveEvent(QDragLeaveEvent*) {
    m_drags.EndDrag();
}

void CXSheetView::dropEvent(QDropEvent* event) {
    m_drags.EndDrag();
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
