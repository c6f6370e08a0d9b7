#pragma once

#include "scene/PaintTools.h"
#include "scene/ViewList.h"
#include "views/ZoomableView.h"
#include "views/cel/CelFlip.h"
#include "views/cel/CelHands.h"
#include "views/cel/CelSurface.h"
#include "views/cel/FillMarks.h"
#include "views/cel/PenChoice.h"
#include "views/cel/PenInput.h"
#include "views/cel/WindowPick.h"

#include <QBasicTimer>
#include <optional>
#include <vector>

namespace velmor {

class CProfile;
class CVelmorltDoc;
class IPrompter;

/// What the next release of the mouse picks a colour for.
enum class CelPick { Nothing, Foreground, ColorKey };

/// The image under edit, at a zoom level, and the mouse that paints it.
///
/// The right button, pressed while the left one works with the tool, gives up; alone it opens the menu where it is
/// let go. An image that is opened is shown whole until it is zoomed or painted on.
///
/// The pen of a tablet does what the mouse does; with its eraser end it erases whatever the tool. Where it goes
/// while the program is busy is collected and painted at once, through every position.
class CCelView final : public CZoomableView, public IDocView {
public:
    /// Document, prompter and profile outlive the view, which takes itself off the document's list when it dies.
    CCelView(CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile, QWidget* parent = nullptr);
    ~CCelView() override;

    CelTool Tool() const { return m_hands.Tool(); }
    void SetTool(CelTool tool);
    /// The colour under the next release of the mouse becomes the foreground colour, or the key of a colour keying
    /// of the picture. Escape and the right button call it off.
    void Pick();
    void ColorKey();
    CelPick PendingPick() const { return m_pick; }
    void CancelPick();
    /// Turns the view by a step, against the clock or with it, as one turns the paper while drawing.
    void TurnLeft();
    void TurnRight();
    void TurnUpright();
    void MirrorView();
    /// Whether lines are smooth where the image is shown smaller than it is.
    bool IsSmooth() const { return m_surface.IsSmooth(); }
    void ToggleSmooth() { m_surface.ToggleSmooth(); }
    bool HasNavigator() const { return m_surface.HasNavigator(); }
    void ToggleNavigator();
    const CPenSettings& PenSettings() const { return m_pens.Settings(); }
    /// See CPenChoice.
    void EditPenSettings() { m_pens.Edit(); }
    void TogglePressure() { m_pens.TogglePressure(); }
    void ToggleStabilizer() { m_pens.ToggleStabilizer(); }
    /// Shows the neighbour of the image under edit in its place, until the key is let go. Nothing is painted then.
    void FlipToPrevious() { Flip(DrawingDirection::Previous); }
    void FlipToNext() { Flip(DrawingDirection::Next); }
    /// Plays the drawings of the cursor's level in the place of the image; once more, and it stops.
    void TogglePlaying();
    const CCelFlip& Flipped() const { return m_flip; }
    /// Another drawing, in the same place of the view if it is of the same size.
    void OpenPrevious();
    void OpenNext();
    void OpenNew();
    /// Whether the tool moves pinned drawings. Choosing another tool ends it.
    bool ShiftsPins() const { return m_hands.ShiftsPins(); }
    void ToggleShiftingPins();
    /// The same, of any pixel of the program's windows.
    void PickFromWindow() { m_windowPick.Toggle(); }
    bool IsPickingFromWindow() const { return m_windowPick.IsOn(); }
    /// The gaps between lines that fills close as they are set now.
    bool ShowsGaps() const { return m_fillMarks.ShowsGaps(); }
    void ToggleGaps();
    /// Asks for the grid behind transparent pixels.
    void EditGrid();

    /// Shows what a command has made of the image and of its selection.
    void ShowEdit(const CPaintResult& result);
    /// The point of the image in the middle of what is seen.
    CPoint Middle() const;

    void OnUpdate(UpdateHint hint) override;

protected:
    CSize ImageSize() const override { return m_surface.Size(); }
    bool HasImage() const override;
    bool CanTurn() const override { return true; }
    CViewCursor CursorNow() const override;
    bool BeginTool(CPoint at) override;
    void MoveTool(CPoint to) override;
    void EndTool(CPoint at) override;
    void LoseTool() override;
    void BeforeChange() override { CancelDrag(); }
    void RefreshOverlay() override;
    void AfterZoom() override { FollowWithNavigator(); }
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    /// Where the pointer is, out of the event that is being worked off.
    void NotePointer(const QSinglePointEvent& event);
    void RefreshSelection();
    void ShowInMiddle(CRealPoint point);
    void FollowWithNavigator();
    /// The chosen one, or the eraser where the pen is held by that end.
    CelTool ToolNow() const;
    void OnPen(QTabletEvent& event);
    /// Lets the hand work off what has been collected; false when that fails.
    bool FlushHand();
    void RebuildDisplay();
    void Flip(DrawingDirection direction);
    void ShowInstead(CDisplayBitmap bitmap);
    /// Calls open(), which may open another image.
    template<class Open>
    void KeepingView(Open open);
    void CancelDrag();
    /// As well as what waits for the next press.
    void GiveUp();
    /// False when it is a failure, which has been told then.
    bool ShowResult(const CPaintResult& result);
    void ShowLeak(CPoint at);
    std::optional<CFillMarks::CState> FillState() const;
    void StartPick(CelPick pick);
    void FinishPick(CPoint point);

    bool IsBrushShown() const;
    CCelOverlay OverlayNow() const;

    CVelmorltDoc& m_doc;
    IPrompter& m_prompter;
    CProfile& m_profile;
    CGridSettings m_grid;
    CCelSurface m_surface;
    CPenChoice m_pens;
    CCelFlip m_flip;
    CCelHands m_hands;
    CPenInput m_pen;
    CFillMarks m_fillMarks;
    CWindowPick m_windowPick;
    CelPick m_pick = CelPick::Nothing;
    std::optional<CPoint> m_pointer; ///< nothing while it is elsewhere
    CHandPoint m_handPoint;          ///< of the last event
    std::vector<CHandPoint> m_burst; ///< where the tool has gone since the hand has moved last
    CViewMapping m_burstMapping;     ///< what they are in
    QBasicTimer m_frame;             ///< until everything that has happened by now is worked off
    bool m_opensMenu = false;        ///< the right button is down, and nothing was given up by it
    int m_openedImages;              ///< the model's, when it was looked at last
    CSize m_keptSize;                ///< an image of this size is shown where the one before it was
};

} // namespace velmor
