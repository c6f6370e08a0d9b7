#pragma once

#include "scene/ViewList.h"
#include "views/AssetThumbnails.h"
#include "views/xsheet/LevelDrag.h"
#include "views/xsheet/SheetGlance.h"
#include "views/xsheet/SheetGrip.h"
#include "views/xsheet/SheetPictures.h"
#include "views/xsheet/SheetTyping.h"
#include "views/xsheet/SoundDrag.h"
#include "views/xsheet/XSheetLook.h"
#include "views/xsheet/XSheetMouse.h"
#include "views/xsheet/XSheetSounds.h"
#include "views/xsheet/XSheetWaves.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QPointer>
#include <array>
#include <functional>
#include <memory>
#include <string>

class QMenu;

namespace velmor {

class CVelmorltDoc;
class CXSheetStyle;
class IPrompter;

/// Of cells, level headers, the camera column and the sound column. They belong to the caller.
using CSheetMenus = std::array<QMenu*, 4>;

/// The exposure sheet as a grid, levels across and frames down: sets cursor and selection, opens the dialogs of a
/// level's header and takes dropped assets.
class CXSheetView final : public QAbstractScrollArea, public IDocView {
public:
    /// The document outlives the view, which takes itself off the document's list when it dies.
    CXSheetView(CVelmorltDoc& doc, IPrompter& prompter, QWidget* parent = nullptr);
    ~CXSheetView() override;

    /// Selected assets let go at a point of the screen: cels and pictures, and sounds. Outside the xsheet: nothing.
    void DropCels(const QPoint& screenPoint);
    void DropSounds(const QPoint& screenPoint);
    /// Called when a drag has changed the selection, of which the document tells nobody.
    void SetSelectionCallback(std::function<void()> changed) { m_selectionChanged = std::move(changed); }
    /// Called when the space bar is pressed.
    void SetSpaceCallback(std::function<void()> pressed) { m_spacePressed = std::move(pressed); }
    /// Called when Enter is pressed with nothing typed, unless that is the key of a command.
    void SetEnterCallback(std::function<void()> pressed) { m_enterPressed = std::move(pressed); }
    /// Shown at a right click.
    void SetContextMenus(const CSheetMenus& menus);
    /// The waves of what is heard, in the sound column.
    void ShowSoundWaves(bool shown);
    bool ShowsSoundWaves() const { return m_sounds.ShowsWaves(); }
    /// The grid on the viewport as it is scrolled now.
    const CXSheetGeometry& Geometry() const { return m_geometry; }

    void OnUpdate(UpdateHint hint) override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    static constexpr int scrollIntervalMs = 80;

    void SetScrolls();
    void ScrollTo(int firstLevel, int firstFrame);
    /// Takes over a geometry that is scrolled differently, moving what is painted along where that can be done.
    void MovePainted(const CXSheetGeometry& scrolled);
    void ShowMovedCursor();
    void TellNote();
    /// Brings the frame that is played into view, a page at a time.
    void ShowPlayedFrame();
    /// Whether a press there begins to scrub.
    bool Scrubs(const QMouseEvent& press) const;
    void ScrubTo(QPoint point);
    void EndScrubbing();
    /// Return and Enter. False for any other key.
    bool EnterCell(const QKeyEvent& key);
    /// Space plays and stops, Escape goes back. False for any other key.
    bool PlayByKey(const QKeyEvent& key);
    CXSheetLook Look();
    CSheetGlance Glance();
    /// Takes what is to be shown from the document and has painted what differs.
    void Refresh();
    void PressSheet(const QMouseEvent& event);
    void DragSelection(QPoint point, bool mouseMoved);
    void DragGrip(QPoint point, Qt::KeyboardModifiers keys);
    void EndGripDrag(bool released);
    bool IsMouseBusy() const {
        return m_mouse.IsPressed() || m_grip.IsDragging() || m_soundDrag.IsActive() || m_levelDrag.IsDragging();
    }
    /// Cells as large as they are wanted now, with the cursor's in view. Returns whether rows have another height.
    bool SetCellSizes();
    /// Keeps the frame at a height of the client area where it is.
    void ZoomAt(int y, int by);
    bool PressHeader(const QMouseEvent& event);
    void DragLevels(QPoint point);
    void EndLevelDrag(bool released);
    void DragAssets(QPoint point);
    void ScrollUnderAssets();
    /// The sound that has been taken hold of follows the mouse.
    void DragSound(QPoint point);
    void ScrollUnderSound();
    void LetSoundGo();
    /// Frames that the sheet scrolls while a sound is held where the mouse is.
    int SoundScroll() const;
    void KeepScrolling(bool scrolls);
    void PointAt(const CPointerLook& pointer);
    void ShowHotButton(QPoint point, bool pressed);
    void EndDrag();
    std::optional<CDropMark> DropMarkAt(QPoint point) const;
    QMenu* MenuAt(QPoint point) const;

    CVelmorltDoc& m_doc;
    IPrompter& m_prompter;
    bool m_tellsNote = false;
    CXSheetGeometry m_geometry;
    CXSheetWaves m_waves;
    CXSheetSounds m_sounds;
    CSoundDrag m_soundDrag;
    CPointerLook m_pointer;
    CXSheetLook m_look; ///< what was painted, or is about to be
    std::unique_ptr<CXSheetStyle> m_style;
    CXSheetMouse m_mouse;
    CGripDrag m_grip;
    CLevelDrag m_levelDrag;
    CAssetThumbnails m_thumbnails;
    CSheetPictures m_pictures;
    CSheetTyping m_typing;
    std::function<void()> m_selectionChanged;
    std::function<void()> m_spacePressed;
    std::function<void()> m_enterPressed;
    bool m_isScrubbing = false;
    bool m_showsPlay = false; ///< the frame that is played is kept in view
    std::array<QPointer<QMenu>, 4> m_menus;

    QBasicTimer m_scrollTimer; ///< runs while a drag is held where it scrolls
    QPoint m_dragPoint;
    int m_levelWheel = 0; ///< wheel motion not yet scrolled
    int m_zoomWheel = 0;  ///< the same, not yet zoomed by
    std::string m_scene;
    CSheetCell m_shownCursor;
};

} // namespace velmor
