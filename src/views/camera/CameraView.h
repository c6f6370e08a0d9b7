#pragma once

#include "scene/ViewList.h"
#include "views/ZoomableView.h"
#include "views/camera/CameraInput.h"
#include "views/camera/CameraMarks.h"
#include "views/camera/CellHandleHand.h"
#include "views/camera/PathHand.h"
#include "views/camera/PictureFeed.h"
#include "views/camera/PreviewScreen.h"
#include "views/camera/SpacingHand.h"

#include <QImage>
#include <QRect>
#include <array>
#include <functional>
#include <optional>
#include <string>

namespace velmor {

class CVelmorltDoc;
struct CPictureMapping;

/// The current frame through the camera: shows the composed picture, motion paths and selection marks over it, and
/// turns drags into camera input. The picture of a scene that is opened is shown whole, and stays so in a view of
/// another size until it is zoomed. Arrows and page keys go to other frames.
class CCameraView final : public CZoomableView, public IDocView {
public:
    /// The document outlives the view, which takes itself off the document's list when it dies.
    explicit CCameraView(CVelmorltDoc& doc, QWidget* parent = nullptr);
    ~CCameraView() override;

    void OnUpdate(UpdateHint hint) override;
    /// Called when the space bar is tapped.
    void SetTapCallback(std::function<void()> tapped) { m_tapped = std::move(tapped); }

    /// Whether a drag draws the path of the cells between the keys of the selection.
    bool IsDrawingPath() const { return m_path.IsOn(); }
    void TogglePathDrawing();

    QSize minimumSizeHint() const override;

protected:
    CSize ImageSize() const override;
    bool HasImage() const override;
    CViewCursor CursorNow() const override;
    bool BeginTool(CPoint at) override;
    void MoveTool(CPoint to) override;
    void EndTool(CPoint at) override;
    void LoseTool() override;
    void AfterZoom() override;
    void ScreenChanged() override {
        TakePicture();
        TakeOnion();
    }
    void TapSpace() override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    QRect PictureRect() const;
    /// Has a scene that was opened shown whole, and one that is kept so fit.
    void FitScene();
    void TakePicture();
    /// Shows what is played in place.
    void ShowPreview();
    void TellPreviewSize();
    void TakeOnion();
    const CCameraMarks& Marks();
    /// The hand that would take hold of something at the pointer; null for none.
    ICameraHand* HandAt(CRealPoint client) const;
    std::string HandCursor() const;
    void NotePointer(const QMouseEvent& event);
    void MoveHand();
    void GiveUpHand();
    /// Whether a key was for what is dragged or drawn.
    bool KeyToHands(const QKeyEvent& event, bool isPressed);
    CPictureMapping PictureMapping() const;
    /// The guides as that frame's camera sees them.
    void PaintGuidesOver(QPainter& painter, int frame);
    void PaintPicture(QPainter& painter, const QRect& exposed, const QImage& image);
    void PaintOnion(QPainter& painter);
    void PaintText(QPainter& painter);

    CVelmorltDoc& m_doc;
    CPictureFeed m_feed;
    CPreviewScreen m_preview;
    CCameraInput m_input;
    CPathHand m_path;
    CCellHandleHand m_handles;
    CSpacingHand m_spacing;
    std::array<ICameraHand*, 3> m_hands{&m_path, &m_handles, &m_spacing}; ///< the first one that can takes hold
    ICameraHand* m_hand = nullptr;                                        ///< the one that is at work
    std::string m_handCursor;
    CCameraHandPoint m_pointer; ///< where the mouse was last
    CCameraHandPoint m_handled; ///< and where when the hand was told
    bool m_hasMoved = false;    ///< since it came down
    QImage m_picture;           ///< as it is painted at the zoom
    QImage m_onion;             ///< what shines through the picture, at the same zoom; null for nothing
    std::string m_scene;        ///< the one that is shown
    std::function<void()> m_tapped;
    std::optional<CCameraMarks> m_marks; ///< nothing when they are to be collected again
};

} // namespace velmor
