#pragma once

#include "scene/ViewList.h"
#include "views/WheelTurn.h"
#include "views/ZoomLevel.h"
#include "views/camera/CameraDrag.h"
#include "views/camera/CameraMarks.h"
#include "views/camera/PictureFeed.h"

#include <QAbstractScrollArea>
#include <QImage>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <functional>
#include <optional>
#include <string>

class QMenu;

namespace velmor {

class CVelmorltDoc;

/// The current frame through the camera: shows the composed picture, motion paths and selection marks over it, and
/// turns drags into camera input or, in pan mode, into scrolling. Besides pan mode the middle button, or the space
/// bar held down, scrolls; the wheel scrolls, and with Ctrl zooms about the pointer. The picture of a scene that is
/// opened is shown whole, and stays so in a view of another size until it is zoomed. Arrows and page keys go to
/// other frames.
class CCameraView final : public QAbstractScrollArea, public IDocView {
public:
    /// The document outlives the view, which takes itself off the document's list when it dies.
    explicit CCameraView(CVelmorltDoc& doc, QWidget* parent = nullptr);
    ~CCameraView() override;

    /// Shown at a right click; belongs to the caller.
    void SetContextMenu(QMenu* menu);

    void ZoomIn();
    void ZoomOut();
    void ZoomOneToOne();
    /// Shows the whole picture as large as there is room.
    void FitToWindow();
    CZoomLevel Zoom() const { return m_zoom; }
    /// Called whenever the zoom has changed.
    void SetZoomCallback(std::function<void()> changed) { m_zoomChanged = std::move(changed); }
    void TogglePan();
    bool IsPanMode() const { return m_panMode; }

    void OnUpdate(UpdateHint hint) override;

    QSize minimumSizeHint() const override;

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    /// A drag under way: camera input, or scrolling when there is none.
    struct CDrag {
        Qt::MouseButton button = Qt::NoButton;
        QPoint last; ///< in the viewport
        std::optional<CCameraDrag> input;
    };

    bool IsSceneOpen() const;
    QRect PictureRect() const;
    void SetScrolls();
    /// As the user wants it: the picture need not fit any longer.
    void ZoomTo(CZoomLevel zoom);
    void SetZoom(CZoomLevel zoom);
    void SetZoomAt(CZoomLevel zoom, QPoint point);
    /// Zooms so that the picture fits, if it is to.
    void Fit();
    void ShowOpenedScene();
    void ScrollTo(QPoint position);
    QPoint ScrollPosition() const;
    void TakePicture();
    void UpdateCursor();

    bool IsPanning() const;
    CPoint InPicture(QPoint point) const;
    CCameraDrag NewInput(QPoint point) const;
    CPoint MotionTo(QPoint point);
    void EndDrag(QPoint point);

    const CCameraMarks& Marks();
    void PaintPicture(QPainter& painter, const QRect& exposed);
    void PaintText(QPainter& painter);

    CVelmorltDoc& m_doc;
    CPictureFeed m_feed;
    QImage m_picture; ///< as it is painted at the zoom
    CZoomLevel m_zoom;
    std::optional<CZoomLevel> m_largestFit; ///< up to which the picture is kept fitting; nothing once it was zoomed
    std::string m_scene;                    ///< the one that is shown
    std::function<void()> m_zoomChanged;
    bool m_panMode = false;
    bool m_spaceHeld = false;
    std::optional<CDrag> m_drag;
    std::optional<CCameraMarks> m_marks; ///< nothing when they are to be collected again
    double m_cursorScale = 0;
    const char* m_cursorName = nullptr;
    CWheelTurn m_wheel;
    QPointer<QMenu> m_menu;
};

} // namespace velmor
