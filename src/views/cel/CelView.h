#pragma once

#include "scene/PaintTools.h"
#include "scene/ViewList.h"
#include "views/WheelTurn.h"
#include "views/cel/CelDisplay.h"
#include "views/cel/CelOverlay.h"
#include "views/cel/CelViewMapping.h"

#include <QAbstractScrollArea>
#include <QPointer>

#include <functional>
#include <optional>
#include <string>

class QMenu;

namespace velmor {

class CProfile;
class CVelmorltDoc;
class IPrompter;

/// What the next release of the mouse picks a colour for.
enum class CelPick { Nothing, Foreground, ColorKey };

/// A cursor by the name of its drawing, empty for the arrow.
struct CCelCursor {
    std::string name;
    CPoint hotSpot;
    double scale = 1; ///< the screen's

    bool operator==(const CCelCursor&) const = default;
};

/// The image under edit, at a zoom level, and the mouse that paints it.
///
/// The left button works with the tool; the right button, pressed while the left is down, gives up, and alone it
/// opens the menu. The middle button, the space bar with the left, and pan mode move the image; the wheel scrolls,
/// and zooms with Ctrl.
class CCelView final : public QAbstractScrollArea, public IDocView {
public:
    /// Document, prompter and profile outlive the view, which takes itself off the document's list when it dies.
    CCelView(CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile, QWidget* parent = nullptr);
    ~CCelView() override;

    void ZoomIn();
    void ZoomOut();
    void ZoomOneToOne();
    /// As large as the view has room for the whole image.
    void FitToWindow();
    CZoomLevel Zoom() const { return m_zoom; }
    void TogglePan();
    bool IsPanMode() const;
    CelTool Tool() const;
    void SetTool(CelTool tool);
    /// The colour under the next release of the mouse becomes the foreground colour, or the key of a colour keying
    /// of the picture. Escape and the right button call it off.
    void Pick();
    void ColorKey();
    CelPick PendingPick() const { return m_pick; }
    void CancelPick();
    /// Opens where the right button is let go; belongs to the caller.
    void SetContextMenu(QMenu* menu);
    /// Called whenever the zoom has changed, or a tool the image.
    void SetStateCallback(std::function<void()> changed) { m_stateChanged = std::move(changed); }
    /// Asks for the grid behind transparent pixels.
    void EditGrid();

    void OnUpdate(UpdateHint hint) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
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
    /// The button that is held: since where, and up to where its way has been worked off. Client coordinates.
    struct CDrag {
        bool pans = false;
        Qt::MouseButton button = Qt::LeftButton;
        CPoint press;
        CPoint last;
    };

    CCelViewMapping Mapping() const;
    bool HasImage() const;
    void RebuildDisplay();
    /// Returns the mapping as it is when the scroll bars have come or gone, which takes them a moment.
    CCelViewMapping UpdateScrollSizes();
    void ScrollTo(CPoint position);
    /// Shows the image whole, at up to a zoom, and goes on doing so in a view of another size until something is
    /// done to it: the pane may be getting its size only now.
    void Fit(CZoomLevel most);
    CCelViewMapping SetZoom(CZoomLevel zoom);
    void ZoomAboutCentre(CZoomLevel zoom);
    void ZoomAbout(CPoint anchor, CZoomLevel zoom);
    void ShowZoomed();

    void CancelDrag();
    void ContinueDrag(CPoint point);
    void FinishDrag(CPoint point);
    void ShowResult(const CPaintResult& result);
    void StartPick(CelPick pick);
    void FinishPick(CPoint point);

    bool IsBrushShown() const;
    CCelOverlay OverlayNow() const;
    /// Repaints what differs between the overlay on the screen and what it should be now.
    void RefreshOverlay();
    CCelCursor CursorNow() const;
    void RefreshCursor();
    void TellState() const;

    CVelmorltDoc& m_doc;
    IPrompter& m_prompter;
    CProfile& m_profile;
    CGridSettings m_grid;
    CCelDisplay m_display;
    CZoomLevel m_zoom;
    CelTool m_tool;
    bool m_panMode = false;
    bool m_isSpaceHeld = false;
    CelPick m_pick = CelPick::Nothing;
    std::optional<CDrag> m_drag;
    std::optional<CPoint> m_pointer; ///< nothing while it is elsewhere
    CCelOverlay m_overlay;           ///< as it is on the screen
    CCelCursor m_cursor;             ///< likewise
    CWheelTurn m_wheel;
    QPointer<QMenu> m_menu;
    bool m_opensMenu = false;        ///< the right button is down, and nothing was given up by it
    int m_openedImages;              ///< the model's, when it was looked at last
    std::optional<CZoomLevel> m_fit; ///< see Fit(); nothing while the zoom is chosen otherwise
    std::function<void()> m_stateChanged;
};

} // namespace velmor
