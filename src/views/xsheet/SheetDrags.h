#pragma once

#include "views/xsheet/LevelDrag.h"
#include "views/xsheet/SheetGrip.h"
#include "views/xsheet/SoundDrag.h"
#include "views/xsheet/XSheetLook.h"
#include "views/xsheet/XSheetMouse.h"

#include <QTimer>
#include <functional>
#include <optional>
#include <utility>

class QMouseEvent;
class QWidget;

namespace velmor {

/// What a drag needs of the sheet that it goes over.
class ISheetSurface {
public:
    /// The grid as it is scrolled now.
    virtual const CXSheetGeometry& Geometry() const = 0;
    virtual void ScrollTo(int firstLevel, int firstFrame) = 0;
    /// Has painted what differs from what is shown.
    virtual void Refresh() = 0;
    /// Brings the document's cursor into view if it has moved.
    virtual void ShowMovedCursor() = 0;

protected:
    ~ISheetSurface() = default;
};

/// What the mouse has hold of over the sheet: a header button, cells that are selected, a handle, levels by their
/// names, a sound, the frame that is scrubbed to, or assets that come from their list. While it is held where the
/// sheet goes on, the sheet scrolls under it. The document has an open scene at each press.
class CSheetDrags {
public:
    /// All outlive the object. Over the viewport the pointer changes its shape.
    CSheetDrags(CVelmorltDoc& doc, ISheetSurface& surface, const CXSheetSounds& sounds, QWidget& viewport);

    /// Called when a drag has changed the selection.
    void SetSelectionCallback(std::function<void()> changed) { m_selectionChanged = std::move(changed); }

    // Of the left button.
    void Press(const QMouseEvent& event);
    void Release(const QMouseEvent& event);
    /// Folds a level, opens a drawing, or the dialog of a cell or of a camera frame.
    void DoubleClick(const QMouseEvent& event);
    void Move(const QMouseEvent& event);
    /// The mouse has left the sheet.
    void PointAway() { PointAt({}); }

    /// Assets are held over a point: marks where they would land.
    void DragAssets(QPoint point);
    /// They have gone, or have been dropped.
    void EndDrag();

    /// Something is held that was pressed upon in the sheet.
    bool IsBusy() const {
        return m_mouse.IsPressed() || m_grip.IsDragging() || m_soundDrag.IsActive() || m_levelDrag.IsDragging();
    }
    /// A handle or levels, which GiveUp() leaves as they were.
    bool HoldsPart() const { return m_grip.IsDragging() || m_levelDrag.IsDragging(); }
    void GiveUp() { EndPart(false); }
    bool HoldsSound() const { return m_soundDrag.IsActive(); }
    /// It stays where it was.
    void LetSoundGo();
    /// What all this adds to the picture.
    const CPointerLook& Pointer() const { return m_pointer; }

private:
    static constexpr int scrollIntervalMs = 80;

    const CXSheetGeometry& Geometry() const { return m_surface.Geometry(); }
    void PointAt(const CPointerLook& pointer);
    void ShowHotButton(QPoint point, bool pressed);
    bool PressHeader(const QMouseEvent& event);
    void PressSheet(const QMouseEvent& event);
    /// Opens what a double click has selected.
    void Open(QPoint point, Qt::KeyboardModifiers keys);

    void KeepScrolling(bool scrolls);
    void ScrollBy(int levels, int frames);
    void ScrollOn();

    /// Whether a press there begins to scrub.
    bool Scrubs(const QMouseEvent& press) const;
    void ScrubTo(QPoint point);
    void EndScrubbing();
    void DragSelection(QPoint point, bool mouseMoved);
    void DragGrip(QPoint point, Qt::KeyboardModifiers keys);
    void DragLevels(QPoint point);
    void EndPart(bool released);
    template<typename TDrag>
    void LetGo(TDrag& drag, bool released);
    /// The sound that has been taken hold of follows the mouse.
    void DragSound(QPoint point);
    void DropSound();
    /// Frames that the sheet scrolls while a sound is held where the mouse is.
    int SoundScroll() const;
    std::optional<CDropMark> DropMarkAt(QPoint point) const;

    CVelmorltDoc& m_doc;
    ISheetSurface& m_surface;
    const CXSheetSounds& m_sounds;
    QWidget& m_viewport;
    std::function<void()> m_selectionChanged;
    CPointerLook m_pointer;
    CXSheetMouse m_mouse;
    CGripDrag m_grip;
    CLevelDrag m_levelDrag;
    CSoundDrag m_soundDrag;
    bool m_isScrubbing = false;
    QTimer m_scrollTimer; ///< runs while something is held where it scrolls
    QPoint m_dragPoint;
};

} // namespace velmor
