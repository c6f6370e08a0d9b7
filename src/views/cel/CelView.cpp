#include "views/cel/CelView.h"

#include "image/CelImg.h"
#include "scene/AssetTransforms.h"
#include "scene/CelPainting.h"
#include "scene/CelSelection.h"
#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/PaletteOperations.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"
#include "scene/VelmorltDoc.h"
#include "scene/paper/LightTable.h"
#include "scene/paper/Paper.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QTabletEvent>

#include <cmath>
#include <utility>

namespace velmor {

namespace {

constexpr double turnStep = 15; ///< degrees
/// What may change the neighbours of the image under edit, or the files of what shines through it.
constexpr UpdateHint paperHints =
    UpdateHint::EditedImage | UpdateHint::Paper | structureAndPictureHint | UpdateHint::AssetLists;

} // namespace

CCelView::CCelView(CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile, QWidget* parent)
    : CZoomableView(parent),
      m_doc(doc),
      m_prompter(prompter),
      m_profile(profile),
      m_grid(ReadGridSettings(profile)),
      m_surface(*viewport(), profile, [this](CRealPoint point) { ShowInMiddle(point); }),
      m_pens(profile, prompter, [this] { CancelDrag(); }),
      m_flip(
          doc, [this](CDisplayBitmap bitmap) { ShowInstead(std::move(bitmap)); },
          [this] {
              RebuildDisplay();
              TellState();
          }),
      m_hands(doc, profile, m_pens.Settings(), [this](const std::string& text) { TellStatus(text); }),
      m_fillMarks([this] { return FillState(); }, [this] { return m_doc.Filling().LinesNow(); },
                  [this] { RefreshOverlay(); }),
      m_windowPick([this](ColorRef color) { m_doc.Palette().SetFGColorValue(color); }),
      m_openedImages(doc.Model().openedImages) {
    m_doc.Views().Add(*this);
    setObjectName("celView");
    setAccessibleName("Cel editor");
    m_doc.Paper().Refresh();
    RebuildDisplay();
    if (Get(profile, setting::showFillGaps) != 0)
        m_fillMarks.ShowGaps(true);
}

CCelView::~CCelView() {
    m_doc.Views().Remove(*this);
}

bool CCelView::HasImage() const {
    return !m_surface.IsEmpty() && m_doc.Model().celImg.GetLoadState() != LoadState::Nothing;
}

void CCelView::RebuildDisplay() {
    if (!m_surface.Rebuild(m_doc.Model().celImg, m_grid, m_doc.Paper().Sheet()))
        m_prompter.ShowMessage("Internal error : Could not update mem dc");
    UpdateScrollSizes();
    RefreshCursor();
    RefreshOverlay();
    RefreshSelection();
    FollowWithNavigator();
}

void CCelView::TurnLeft() {
    SetTurn(Turn().TurnedBy(-turnStep));
}

void CCelView::TurnRight() {
    SetTurn(Turn().TurnedBy(turnStep));
}

void CCelView::TurnUpright() {
    SetTurn(CViewTurn());
}

void CCelView::MirrorView() {
    SetTurn(Turn().Mirrored());
}

void CCelView::ToggleNavigator() {
    m_surface.ToggleNavigator();
    FollowWithNavigator();
}

void CCelView::ShowInMiddle(CRealPoint point) {
    const CViewMapping mapping = Mapping();
    ScrollTo(mapping.ScrollShowing(point, {mapping.client.width / 2.0, mapping.client.height / 2.0}));
}

void CCelView::FollowWithNavigator() {
    m_surface.Follow(Mapping(), HasImage());
}

void CCelView::scrollContentsBy(int dx, int dy) {
    FlushHand(); // where it was before
    CZoomableView::scrollContentsBy(dx, dy);
    FollowWithNavigator();
}

void CCelView::resizeEvent(QResizeEvent* event) {
    CZoomableView::resizeEvent(event);
    FollowWithNavigator();
}

CelTool CCelView::ToolNow() const {
    return m_pen.IsEraserNear() ? CelTool::Eraser : Tool();
}

void CCelView::ToggleShiftingPins() {
    GiveUp();
    m_hands.ToggleShiftingPins();
    RefreshCursor();
    RefreshOverlay();
}

void CCelView::ShowInstead(CDisplayBitmap bitmap) {
    m_surface.ShowInstead(std::move(bitmap));
    TellState();
    FollowWithNavigator();
}

void CCelView::Flip(DrawingDirection direction) {
    if (HasImage() && !IsDragging() && m_pick == CelPick::Nothing)
        m_flip.To(direction, m_grid);
}

void CCelView::TogglePlaying() {
    if (m_flip.IsPlaying())
        m_flip.End();
    else if (HasImage() && !IsDragging() && m_pick == CelPick::Nothing)
        m_flip.Play(m_grid);
}

template<class Open>
void CCelView::KeepingView(Open open) {
    CancelDrag();
    m_keptSize = ImageSize();
    const CPoint scroll = Mapping().scroll;
    open();
    if (std::exchange(m_keptSize, {}) == ImageSize())
        ScrollTo(scroll);
}

void CCelView::OpenPrevious() {
    KeepingView([this] { m_doc.Drawings().Step(DrawingDirection::Previous); });
}

void CCelView::OpenNext() {
    KeepingView([this] { m_doc.Drawings().Step(DrawingDirection::Next); });
}

void CCelView::OpenNew() {
    KeepingView([this] { m_doc.Drawings().NewDrawing(); });
}

CPoint CCelView::Middle() const {
    const CViewMapping mapping = Mapping();
    const CRealPoint middle = mapping.ToImage({mapping.client.width / 2.0, mapping.client.height / 2.0});
    return {static_cast<int>(std::floor(middle.x)), static_cast<int>(std::floor(middle.y))};
}

void CCelView::ShowEdit(const CPaintResult& result) {
    CancelDrag();
    ShowResult(result);
    RefreshSelection();
}

void CCelView::RefreshSelection() {
    m_surface.SetMarks(m_hands.Selecting().Marks().StateOf(Mapping(), m_hands.HoldsSelection()));
}

void CCelView::NotePointer(const QSinglePointEvent& event) {
    const QPointF at = event.position();
    m_pointer = PointOf(event);
    m_handPoint = {};
    m_handPoint.at = {at.x(), at.y()};
    m_handPoint.modifiers = event.modifiers();
    m_handPoint.time = event.timestamp();
    m_pen.AddTo(m_handPoint);
}

void CCelView::SetTool(CelTool tool) {
    GiveUp();
    m_hands.SetTool(tool);
    RefreshCursor();
    RefreshOverlay();
    RefreshSelection();
}

void CCelView::Pick() {
    if (HasImage())
        StartPick(CelPick::Foreground);
}

void CCelView::ColorKey() {
    if (m_doc.Model().celImg.GetLoadState() == LoadState::Picture) {
        StartPick(CelPick::ColorKey);
        return;
    }
    m_prompter.ShowMessage("Internal Error : no picture image loaded in CCelView::ColorKey");
}

void CCelView::StartPick(CelPick pick) {
    GiveUp();
    m_flip.End();
    m_pick = pick;
    setFocus(); // for Escape
    RefreshCursor();
    RefreshOverlay();
}

void CCelView::CancelPick() {
    if (std::exchange(m_pick, CelPick::Nothing) == CelPick::Nothing)
        return;
    RefreshCursor();
    RefreshOverlay();
}

void CCelView::FinishPick(CPoint point) {
    const CelPick pick = m_pick;
    CancelPick();
    const std::optional<CPoint> pixel = Mapping().PixelShownAt(point);
    const ColorRef color = pixel ? DisplayColor(m_doc.Model().celImg, m_grid, *pixel) : surroundColor;
    if (pick == CelPick::Foreground)
        m_doc.Palette().SetFGColorValue(color);
    else
        m_doc.Transforms().ColorKeyEdited({BlueOf(color), GreenOf(color), RedOf(color), 255});
}

void CCelView::ToggleGaps() {
    m_fillMarks.ShowGaps(!m_fillMarks.ShowsGaps());
    Set(m_profile, setting::showFillGaps, m_fillMarks.ShowsGaps() ? 1 : 0);
    if (m_fillMarks.ShowsGaps() && m_doc.Model().paint.fill.gap == 0)
        TellStatus("Fills close no gaps as they are set: the gap size is 0");
}

std::optional<CFillMarks::CState> CCelView::FillState() const {
    const CSceneModel& model = m_doc.Model();
    if (IsDragging() || model.celImg.GetLoadState() != LoadState::Cel)
        return std::nullopt;
    return CFillMarks::CState{model.openedImages, model.celImg.Changes(), model.paint.fill.gap};
}

void CCelView::ShowLeak(CPoint at) {
    m_fillMarks.SetLeak(at);
    TellStatus(
        "Not filled: the paint would run out through the place that is marked. A larger gap size closes it; fill "
        "again with Shift to paint all the same");
}

void CCelView::EditGrid() {
    const auto accept = [this](const CGridSettings& grid) {
        if (grid.size < 1)
            m_prompter.ShowMessage("The grid size must be at least 1 pixel");
        return grid.size >= 1;
    };
    const std::optional<CGridSettings> grid = m_prompter.Ask(CGridSettingsRequest{m_grid, accept});
    if (!grid)
        return;
    WriteGridSettings(m_profile, *grid);
    m_grid = *grid;
    RebuildDisplay();
}

void CCelView::OnUpdate(UpdateHint hint) {
    const bool hasOtherPaper = Holds(hint, paperHints) && m_doc.Paper().Refresh();
    if (Holds(hint, UpdateHint::EditedImage | UpdateHint::Tools | UpdateHint::Cells)) {
        m_fillMarks.SetLeak({});
        m_fillMarks.ForgetGaps();
    }
    if (Holds(hint, UpdateHint::EditedImage)) {
        m_burst.clear(); // was meant for what was there before
        GiveUp();
        CancelPick();
        m_flip.Forget();
        RebuildDisplay();
        const int opened = m_doc.Model().openedImages;
        if (std::exchange(m_openedImages, opened) != opened) {
            m_hands.ForgetLastStroke();
            if (m_keptSize != ImageSize())
                Fit(CZoomLevel());
        }
    } else if (hasOtherPaper && !m_flip.IsOn()) {
        RebuildDisplay();
    }
    if (Holds(hint, UpdateHint::Tools)) {
        CancelDrag();
        RefreshOverlay();
    }
    if (Holds(hint, UpdateHint::AssetLists))
        RefreshCursor(); // there may be no folder any more
}

bool CCelView::ShowResult(const CPaintResult& result) {
    if (!result.status) {
        CancelDrag(); // the release goes to the message
        m_prompter.ShowMessage(result.status.Message());
        return false;
    }
    if (result.leak)
        ShowLeak(*result.leak);
    if (result.changed.IsEmpty())
        return true;
    TellState();
    m_surface.Update(m_doc.Model().celImg, m_grid, m_doc.Paper().Sheet(), result.changed, Mapping());
    return true;
}

void CCelView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const CViewMapping mapping = Mapping();
    m_surface.PaintImage(painter, event->region(), mapping);
    if (m_surface.IsEmpty())
        return;
    m_hands.Selecting().Marks().Paint(painter, mapping, m_hands.HoldsSelection());
    m_surface.PaintOverlay(painter);
}

bool CCelView::IsBrushShown() const {
    const bool isBrush = ToolNow() == CelTool::Eraser || ToolNow() == CelTool::LineBrush;
    const bool paints = !IsPanning() && (IsDragging() || m_pick == CelPick::Nothing);
    return isBrush && paints && HasImage() && m_pointer && m_doc.Model().paint.brush >= 0;
}

CCelOverlay CCelView::OverlayNow() const {
    CCelOverlay overlay;
    if (IsBrushShown())
        overlay.brush = BrushOutline(Mapping(), *m_pointer, m_doc.Model().paint.brush);
    m_fillMarks.AddTo(overlay, Mapping());
    if (IsToolDown() || m_hands.Now().IsWaiting())
        m_hands.Now().Outline(overlay, Mapping());
    return overlay;
}

void CCelView::RefreshOverlay() {
    m_surface.SetOverlay(OverlayNow());
}

CViewCursor CCelView::CursorNow() const {
    if (!HasImage() || !m_doc.Model().HasFolder())
        return {};
    if (IsPanning() && (IsDragging() || m_pick == CelPick::Nothing))
        return {"cursor-pan", {16, 16}};
    if (m_pick != CelPick::Nothing)
        return {"cursor-pick", {4, 28}};
    if (ShiftsPins())
        return {"cursor-move", {16, 16}};
    if (!CanUse(ToolNow(), m_doc.Model().celImg))
        return {};
    return {ToolOf(ToolNow()).cursor, ToolOf(ToolNow()).hotSpot};
}

bool CCelView::BeginTool(CPoint) {
    m_fillMarks.SetLeak({});
    if (m_flip.IsOn()) {
        m_flip.End(); // what would be painted on is not what is seen
        return false;
    }
    const CelTool tool = m_handPoint.isEraserEnd ? CelTool::Eraser : Tool();
    m_hands.TakeUp(tool);
    if (!m_hands.IsSelecting() && m_doc.Selection().HasSelection()) {
        m_doc.Selection().SelectNone(); // it would not hold a stroke back
        RefreshSelection();
    }
    if (m_hands.Now().Press(tool, m_handPoint, Mapping())) {
        StopFitting();
        return true;
    }
    m_hands.PutDown();
    RefreshSelection();
    return false;
}

// The first of several events in a row is worked off at once, the rest together.
void CCelView::MoveTool(CPoint) {
    if (m_burst.empty())
        m_burstMapping = Mapping();
    m_burst.push_back(m_handPoint);
    if (m_frame.isActive())
        return;
    m_frame.start(0, this);
    FlushHand();
}

bool CCelView::FlushHand() {
    if (m_burst.empty())
        return true;
    const std::vector<CHandPoint> way = std::exchange(m_burst, {});
    const bool isDone = ShowResult(m_hands.Now().Move(way, m_burstMapping));
    RefreshOverlay();
    RefreshSelection();
    return isDone;
}

void CCelView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_frame.timerId()) {
        CZoomableView::timerEvent(event);
        return;
    }
    if (m_burst.empty())
        m_frame.stop();
    FlushHand();
}

void CCelView::LoseTool() {
    FlushHand();
    m_hands.Cancel();
}

void CCelView::EndTool(CPoint) {
    ICelHand& hand = m_hands.Now();
    const bool isDone = FlushHand();
    m_hands.PutDown();
    if (!isDone) {
        hand.Cancel();
        return;
    }
    if (!HasImage()) {
        hand.Cancel();
        if (Tool() == CelTool::Bucket)
            m_prompter.ShowMessage("Internal Error : m_CelImg or pDoc is NULL in BUCKETFILL");
        return;
    }
    CPaintResult result;
    {
        const std::shared_ptr<void> wait = hand.IsQuick() ? nullptr : m_prompter.BeginWait();
        result = hand.Release(m_handPoint, Mapping());
    }
    ShowResult(result);
    RefreshSelection();
}

void CCelView::CancelDrag() {
    if (!IsDragging())
        return;
    FlushHand();
    m_hands.Cancel();
    DropDrag();
}

void CCelView::GiveUp() {
    CancelDrag();
    if (!m_hands.Now().IsWaiting())
        return;
    m_hands.Now().Cancel();
    RefreshOverlay();
}

void CCelView::OnPen(QTabletEvent& event) {
    // A press of the tip is a new one, whatever a mouse has begun.
    if (event.type() == QEvent::TabletPress && event.button() == Qt::LeftButton)
        CancelDrag();
    if (event.type() == QEvent::TabletPress)
        setFocus(Qt::MouseFocusReason);
    m_pen.Handle(event, [this](QMouseEvent& mouse) {
        if (mouse.type() == QEvent::MouseButtonPress)
            mousePressEvent(&mouse);
        else if (mouse.type() == QEvent::MouseButtonRelease)
            mouseReleaseEvent(&mouse);
        else
            mouseMoveEvent(&mouse);
    });
    RefreshCursor();
}

void CCelView::mousePressEvent(QMouseEvent* event) {
    if (m_pen.IsEcho(*event))
        return;
    NotePointer(*event);
    m_opensMenu = event->buttons() == Qt::RightButton && !IsDragging() && !m_hands.Now().IsWaiting() &&
                  m_pick == CelPick::Nothing;
    const bool picks = event->button() == Qt::LeftButton && m_pick != CelPick::Nothing;
    if (event->button() == Qt::RightButton) {
        GiveUp();
        CancelPick();
    } else if (!picks && !event->buttons().testFlag(Qt::RightButton)) {
        CZoomableView::mousePressEvent(event);
    }
}

void CCelView::mouseMoveEvent(QMouseEvent* event) {
    if (m_pen.IsEcho(*event))
        return;
    NotePointer(*event);
    CZoomableView::mouseMoveEvent(event);
    if (m_hands.Now().IsWaiting() && !IsDragging())
        m_hands.Now().Hover(m_handPoint, Mapping());
    RefreshOverlay();
}

void CCelView::mouseReleaseEvent(QMouseEvent* event) {
    if (m_pen.IsEcho(*event))
        return;
    NotePointer(*event);
    if (event->button() == Qt::LeftButton && m_pick != CelPick::Nothing) {
        FinishPick(*m_pointer);
    } else if (event->button() == Qt::RightButton) {
        if (std::exchange(m_opensMenu, false))
            ShowMenu(event->globalPosition().toPoint());
    } else {
        if (event->buttons().testFlag(Qt::RightButton))
            CancelDrag();
        CZoomableView::mouseReleaseEvent(event);
    }
    RefreshOverlay();
}

void CCelView::contextMenuEvent(QContextMenuEvent* event) {
    // Of the mouse, whose press may yet be a stroke given up, its release tells.
    if (event->reason() != QContextMenuEvent::Mouse)
        CZoomableView::contextMenuEvent(event);
}

bool CCelView::viewportEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
        OnPen(static_cast<QTabletEvent&>(*event));
        return event->isAccepted();
    case QEvent::Leave:
        m_pointer.reset();
        RefreshOverlay();
        break;
    default:
        break;
    }
    return CZoomableView::viewportEvent(event);
}

void CCelView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape &&
        (IsDragging() || m_hands.Now().IsWaiting() || m_pick != CelPick::Nothing)) {
        GiveUp();
        CancelPick();
    } else if (event->key() == Qt::Key_Escape && m_flip.IsOn()) {
        m_flip.End();
    } else if (const auto result = IsDragging() ? std::nullopt : m_hands.Selecting().Key(*event, Mapping())) {
        ShowEdit(*result);
    } else {
        CZoomableView::keyPressEvent(event);
    }
}

void CCelView::keyReleaseEvent(QKeyEvent* event) {
    const bool isFlipKey = event->key() == Qt::Key_Comma || event->key() == Qt::Key_Period;
    if (isFlipKey && !event->isAutoRepeat() && !m_flip.IsPlaying())
        m_flip.End();
    CZoomableView::keyReleaseEvent(event);
}

void CCelView::focusOutEvent(QFocusEvent* event) {
    m_flip.End();
    CZoomableView::focusOutEvent(event);
}

} // namespace velmor
