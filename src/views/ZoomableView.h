#pragma once

#include "views/ViewMapping.h"
#include "views/WheelTurn.h"

#include <QAbstractScrollArea>
#include <QPointer>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class QMenu;
class QNativeGestureEvent;
class QSinglePointEvent;

namespace velmor {

/// A cursor by the name of its drawing, empty for the arrow.
struct CViewCursor {
    std::string name;
    CPoint hotSpot;
    double scale = 1; ///< the screen's

    bool operator==(const CViewCursor&) const = default;
};

/// A view of one image at a zoom level. The left button works with the view's tool. The middle button, the space
/// bar held down with the left, and pan mode move the image; the wheel scrolls, and with Ctrl zooms about the
/// pointer. A view that can be turned zooms without steps, and has more with the space bar held down: Shift and the
/// left button turn it about its centre, Ctrl and the left button zoom about where it was pressed; a touchpad turns
/// and zooms with two fingers. Points are those of the viewport.
class CZoomableView : public QAbstractScrollArea {
public:
    void ZoomIn();
    void ZoomOut();
    void ZoomOneToOne();
    /// Shows the whole image as large as there is room.
    void FitToWindow();
    CZoomLevel Zoom() const { return m_zoom; }
    /// How the view is turned against the image. The point in its middle stays there.
    const CViewTurn& Turn() const { return m_turn; }
    void SetTurn(const CViewTurn& turn);
    void TogglePan();
    bool IsPanMode() const { return m_panMode; }
    /// Shown at a right click; belongs to the caller.
    void SetContextMenu(QMenu* menu);
    /// Called whenever the zoom has changed, or what else the view's surroundings show of it.
    void SetStateCallback(std::function<void()> changed) { m_stateChanged = std::move(changed); }

protected:
    explicit CZoomableView(QWidget* parent);

    /// Size of the image; empty when there is none.
    virtual CSize ImageSize() const = 0;
    /// Whether there is an image for the mouse to work on.
    virtual bool HasImage() const = 0;
    /// The cursor as things are now; its scale is not asked for.
    virtual CViewCursor CursorNow() const = 0;

    /// Whether it may be turned, and zoomed without steps.
    virtual bool CanTurn() const { return false; }

    /// The tool comes down; false when nothing is begun by it.
    virtual bool BeginTool(CPoint at) = 0;
    virtual void MoveTool(CPoint to) = 0;
    /// It has been lifted.
    virtual void EndTool(CPoint at) = 0;
    /// It was lifted where no event could be seen, over a message for instance.
    virtual void LoseTool() = 0;

    /// Zoom, turn or pan mode are about to be changed, and not by a drag of the view itself.
    virtual void BeforeChange() {}
    /// The image has another zoom.
    virtual void AfterZoom() {}
    /// The window has come to a screen of another scale.
    virtual void ScreenChanged() {}
    /// The space bar was pressed and let go again at once, and the image not moved by it.
    virtual void TapSpace() {}
    /// Repaints what is drawn over the image for the pointer and the tool, where it has changed.
    virtual void RefreshOverlay() {}

    CViewMapping Mapping() const;
    /// Has the scroll bars fit the image. Returns the mapping as it is when they have come or gone, which takes
    /// them a moment.
    CViewMapping UpdateScrollSizes();
    /// Shows the image whole, at up to a zoom, and goes on doing so in a view of another size until it is zoomed:
    /// the pane may be getting its size only now.
    void Fit(CZoomLevel most);
    /// Fits an image of another size, if it is to.
    void Refit();
    void StopFitting() { m_fit.reset(); }

    /// A button is held that moves the image or works with the tool.
    bool IsDragging() const { return m_drag.has_value(); }
    bool IsToolDown() const { return m_drag && m_drag->kind == DragKind::Tool; }
    /// Whether the mouse moves the image, or would.
    bool IsPanning() const { return m_drag ? m_drag->kind != DragKind::Tool : m_panMode || m_isSpaceHeld; }
    /// The button no longer counts as held.
    void DropDrag();

    void RefreshCursor();
    void TellState() const;
    /// For a moment, in the status bar.
    void TellStatus(const std::string& text);
    void ShowMenu(QPoint screenPoint);
    static CPoint PointOf(const QSinglePointEvent& event);
    /// As close as can be to `factor`, with that point of the view staying in place.
    void ZoomTo(double factor, CPoint anchor);
    void ScrollTo(CPoint position);

    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    enum class DragKind { Tool, Pan, Turn, Zoom };
    struct CDrag {
        Qt::MouseButton button = Qt::NoButton;
        DragKind kind = DragKind::Tool;
        CPoint last;
        CPoint press;
        CViewTurn turn; ///< so far, before it is drawn to the next quarter
    };

    void TellBeforeChange();
    DragKind KindOf(const QMouseEvent& press) const;
    void DragTo(CPoint point);
    void TurnFrom(CPoint last, CPoint now);
    /// Size of the image at its own size as it is turned.
    CSize TurnedSize() const;
    bool NativeGesture(const QNativeGestureEvent& gesture);
    void ZoomAboutCentre(CZoomLevel zoom);
    void ZoomAbout(CPoint anchor, CZoomLevel zoom);
    CViewMapping SetZoom(CZoomLevel zoom);
    void ShowZoomed(CPoint scroll);
    void HoldSpace(bool isHeld);
    /// Cursor and overlay.
    void Refresh();

    CZoomLevel m_zoom;
    CViewTurn m_turn;
    std::optional<CZoomLevel> m_fit; ///< see Fit(); nothing while the zoom is chosen otherwise
    bool m_panMode = false;
    bool m_isSpaceHeld = false;
    std::optional<std::uint64_t> m_spacePressed; ///< when, in ms; nothing once it counts as held to move the image
    std::optional<CDrag> m_drag;
    CWheelTurn m_wheel;
    std::optional<CViewCursor> m_cursor; ///< as it is on the screen; nothing before the first
    QPointer<QMenu> m_menu;
    std::function<void()> m_stateChanged;
};

} // namespace velmor
