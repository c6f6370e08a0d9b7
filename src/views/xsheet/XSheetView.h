#pragma once

#include "scene/ViewList.h"
#include "views/AssetThumbnails.h"
#include "views/xsheet/SheetDrags.h"
#include "views/xsheet/SheetGlance.h"
#include "views/xsheet/SheetPictures.h"
#include "views/xsheet/SheetTyping.h"
#include "views/xsheet/XSheetSounds.h"
#include "views/xsheet/XSheetWaves.h"

#include <QAbstractScrollArea>
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
class CXSheetView final : public QAbstractScrollArea, public IDocView, private ISheetSurface {
public:
    /// The document outlives the view, which takes itself off the document's list when it dies.
    CXSheetView(CVelmorltDoc& doc, IPrompter& prompter, QWidget* parent = nullptr);
    ~CXSheetView() override;

    /// Selected assets let go at a point of the screen: cels and pictures, and sounds. Outside the xsheet: nothing.
    void DropCels(const QPoint& screenPoint);
    void DropSounds(const QPoint& screenPoint);
    /// Called when a drag has changed the selection, of which the document tells nobody.
    void SetSelectionCallback(std::function<void()> changed) { m_drags.SetSelectionCallback(std::move(changed)); }
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
    const CXSheetGeometry& Geometry() const override { return m_geometry; }

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
    void SetScrolls();
    void ScrollTo(int firstLevel, int firstFrame) override;
    /// Takes over a geometry that is scrolled differently, moving what is painted along where that can be done.
    void MovePainted(const CXSheetGeometry& scrolled);
    void ShowMovedCursor() override;
    void TellNote();
    /// Brings the frame that is played into view, a page at a time.
    void ShowPlayedFrame();
    /// Return and Enter. False for any other key.
    bool EnterCell(const QKeyEvent& key);
    /// Space plays and stops, Escape goes back. False for any other key.
    bool PlayByKey(const QKeyEvent& key);
    CXSheetLook Look();
    CSheetGlance Glance();
    void Refresh() override;
    /// Cells as large as they are wanted now, with the cursor's in view. Returns whether rows have another height.
    bool SetCellSizes();
    /// Keeps the frame at a height of the client area where it is.
    void ZoomAt(int y, int by);
    QMenu* MenuAt(QPoint point) const;

    CVelmorltDoc& m_doc;
    IPrompter& m_prompter;
    bool m_tellsNote = false;
    CXSheetGeometry m_geometry;
    CXSheetWaves m_waves;
    CXSheetSounds m_sounds;
    CXSheetLook m_look; ///< what was painted, or is about to be
    std::unique_ptr<CXSheetStyle> m_style;
    CSheetDrags m_drags;
    CAssetThumbnails m_thumbnails;
    CSheetPictures m_pictures;
    CSheetTyping m_typing;
    std::function<void()> m_spacePressed;
    std::function<void()> m_enterPressed;
    bool m_showsPlay = false; ///< the frame that is played is kept in view
    std::array<QPointer<QMenu>, 4> m_menus;

    int m_levelWheel = 0; ///< wheel motion not yet scrolled
    int m_zoomWheel = 0;  ///< the same, not yet zoomed by
    std::string m_scene;
    CSheetCell m_shownCursor;
};

} // namespace velmor
