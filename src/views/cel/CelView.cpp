#include "views/cel/CelView.h"

#include "image/CelImg.h"
#include "scene/AssetTransforms.h"
#include "scene/CelPainting.h"
#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/PaletteOperations.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"
#include "scene/VelmorltDoc.h"
#include "views/Icons.h"

#include <QCursor>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace velmor {

namespace {

constexpr int pagesInImage = 10;

QRect ToRect(const CRect& rect) {
    return {rect.x, rect.y, rect.endX - rect.x, rect.endY - rect.y};
}

void SetScrollSize(QScrollBar& bar, int most, int displayed) {
    bar.setRange(0, most);
    bar.setSingleStep(1);
    bar.setPageStep(std::max(displayed / pagesInImage, 1));
}

} // namespace

CCelView::CCelView(CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile, QWidget* parent)
    : QAbstractScrollArea(parent),
      m_doc(doc),
      m_prompter(prompter),
      m_profile(profile),
      m_grid(ReadGridSettings(profile)),
      m_tool(static_cast<CelTool>(
          std::clamp(Get(profile, setting::lastCelTool), 0, static_cast<int>(paintTools.size()) - 1))),
      m_openedImages(doc.Model().openedImages) {
    m_doc.Views().Add(*this);
    setObjectName("celView");
    setAccessibleName("Cel editor");
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    RebuildDisplay();
}

CCelView::~CCelView() {
    m_doc.Views().Remove(*this);
}

bool CCelView::HasImage() const {
    return !m_display.IsEmpty() && m_doc.Model().celImg.GetLoadState() != LoadState::Nothing;
}

CCelViewMapping CCelView::Mapping() const {
    return {m_display.Size(),
            {viewport()->width(), viewport()->height()},
            m_zoom,
            {horizontalScrollBar()->value(), verticalScrollBar()->value()}};
}

void CCelView::RebuildDisplay() {
    if (!m_display.Rebuild(m_doc.Model().celImg, m_grid))
        m_prompter.ShowMessage("Internal error : Could not update mem dc");
    UpdateScrollSizes();
    RefreshCursor();
    RefreshOverlay();
    viewport()->update();
}

CCelViewMapping CCelView::UpdateScrollSizes() {
    CCelViewMapping mapping = Mapping();
    const QSize room = maximumViewportSize();
    mapping.client =
        ClientBesideBars(mapping.Displayed(), {room.width(), room.height()},
                         {verticalScrollBar()->sizeHint().width(), horizontalScrollBar()->sizeHint().height()});
    const CPoint most = mapping.MostScroll();
    SetScrollSize(*horizontalScrollBar(), most.x, mapping.Displayed().width);
    SetScrollSize(*verticalScrollBar(), most.y, mapping.Displayed().height);
    return mapping;
}

void CCelView::ScrollTo(CPoint position) {
    horizontalScrollBar()->setValue(position.x);
    verticalScrollBar()->setValue(position.y);
}

void CCelView::scrollContentsBy(int dx, int dy) {
    if (m_drag && !m_drag->pans) {
        // What has been dragged out stays with the image.
        for (CPoint* point : {&m_drag->press, &m_drag->last})
            *point = {point->x + dx, point->y + dy};
    }
    RefreshOverlay();
    viewport()->update();
}

void CCelView::resizeEvent(QResizeEvent*) {
    if (m_fit)
        Fit(*m_fit);
    else
        UpdateScrollSizes();
}

void CCelView::TogglePan() {
    CancelDrag();
    m_panMode = !m_panMode;
    RefreshCursor();
    RefreshOverlay();
}

bool CCelView::IsPanMode() const {
    return m_panMode;
}

CelTool CCelView::Tool() const {
    return m_tool;
}

void CCelView::SetTool(CelTool tool) {
    CancelDrag();
    if (std::exchange(m_tool, tool) != tool)
        Set(m_profile, setting::lastCelTool, static_cast<int>(tool));
    RefreshCursor();
    RefreshOverlay();
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
    CancelDrag();
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
    const ColorRef color = pixel ? m_display.ColorAt(*pixel) : surroundColor;
    if (pick == CelPick::Foreground)
        m_doc.Palette().SetFGColorValue(color);
    else
        m_doc.Transforms().ColorKeyEdited({BlueOf(color), GreenOf(color), RedOf(color), 255});
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
    if (Holds(hint, UpdateHint::EditedImage)) {
        CancelDrag();
        CancelPick();
        RebuildDisplay();
        const int opened = m_doc.Model().openedImages;
        if (std::exchange(m_openedImages, opened) != opened)
            Fit(CZoomLevel());
    }
    if (Holds(hint, UpdateHint::Tools)) {
        CancelDrag();
        RefreshOverlay();
    }
    if (Holds(hint, UpdateHint::AssetLists))
        RefreshCursor(); // there may be no folder any more
}

void CCelView::ShowResult(const CPaintResult& result) {
    if (!result.status) {
        CancelDrag(); // the release goes to the message
        m_prompter.ShowMessage(result.status.Message());
        return;
    }
    if (result.changed.IsEmpty())
        return;
    TellState();
    m_display.Update(m_doc.Model().celImg, m_grid, result.changed);
    viewport()->update(ToRect(Mapping().ToClient(result.changed)) & viewport()->rect());
}

void CCelView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    if (m_display.IsEmpty()) {
        painter.fillRect(event->rect(), palette().window());
        return;
    }
    const CCelViewMapping mapping = Mapping();
    for (const QRect& exposed : event->region()) {
        // A little more than is exposed, for scales at which the edges of the two do not meet.
        m_display.Paint(painter, mapping, exposed.adjusted(-1, -1, 1, 1) & viewport()->rect());
    }
    Draw(painter, m_overlay);
}

bool CCelView::IsBrushShown() const {
    const bool isBrush = m_tool == CelTool::Eraser || m_tool == CelTool::LineBrush;
    const bool paints = m_drag ? !m_drag->pans : !m_panMode && !m_isSpaceHeld && m_pick == CelPick::Nothing;
    return isBrush && paints && HasImage() && m_pointer && m_doc.Model().paint.brush >= 0;
}

CCelOverlay CCelView::OverlayNow() const {
    CCelOverlay overlay;
    if (IsBrushShown())
        overlay.brush = BrushOutline(Mapping(), *m_pointer, m_doc.Model().paint.brush);
    const ToolForm form = m_doc.Painting().Form();
    if (!m_drag || m_drag->pans || (form != ToolForm::Rectangle && form != ToolForm::Line))
        return overlay;
    const QPoint press(m_drag->press.x, m_drag->press.y);
    const QPoint last(m_drag->last.x, m_drag->last.y);
    overlay.band = QRect(QPoint(std::min(press.x(), last.x()), std::min(press.y(), last.y())),
                         QPoint(std::max(press.x(), last.x()), std::max(press.y(), last.y())));
    if (form == ToolForm::Line)
        overlay.gradient = {press, last};
    return overlay;
}

void CCelView::RefreshOverlay() {
    const CCelOverlay now = OverlayNow();
    if (now == m_overlay)
        return;
    viewport()->update(RegionOf(m_overlay) + RegionOf(now));
    m_overlay = now;
}

CCelCursor CCelView::CursorNow() const {
    if (!HasImage() || !m_doc.Model().HasFolder())
        return {};
    if (m_drag ? m_drag->pans : m_pick == CelPick::Nothing && (m_panMode || m_isSpaceHeld))
        return {"cursor-pan", {16, 16}};
    if (m_pick != CelPick::Nothing)
        return {"cursor-pick", {4, 28}};
    if (!CanUse(m_tool, m_doc.Model().celImg))
        return {};
    return {ToolOf(m_tool).cursor, ToolOf(m_tool).hotSpot};
}

void CCelView::RefreshCursor() {
    CCelCursor now = CursorNow();
    now.scale = devicePixelRatioF();
    if (now == m_cursor)
        return;
    m_cursor = now;
    viewport()->setCursor(now.name.empty() ? QCursor(Qt::ArrowCursor)
                                           : ToolCursor(now.name.c_str(), now.hotSpot.x, now.hotSpot.y, now.scale));
}

void CCelView::TellState() const {
    if (m_stateChanged)
        m_stateChanged();
}

} // namespace velmor
