#include "views/camera/CameraView.h"

#include "scene/CameraAids.h"
#include "scene/CameraPictures.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "scene/paper/Paper.h"
#include "scene/preview/ScenePreview.h"
#include "views/camera/CameraMarksPainter.h"
#include "views/camera/FrameKeys.h"
#include "views/camera/GuidesPainter.h"
#include "views/camera/PictureImage.h"
#include "views/xsheet/XSheetMouse.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <utility>

namespace velmor {

namespace {

constexpr QRgb waitingColor = 0xff404040;
constexpr CPoint hotSpot{16, 16};

const char* CursorNameOf(const CSceneModel& model, bool panning) {
    if (!model.sceneOpen)
        return "cursor-none";
    if (panning)
        return "cursor-pan";
    switch (model.inputMode) {
    case InputMode::Move:
        return "cursor-move";
    case InputMode::Rotate:
        return "cursor-rotate";
    case InputMode::Zoom:
        return "cursor-zoom";
    }
    return "cursor-none";
}

} // namespace

CCameraView::CCameraView(CVelmorltDoc& doc, QWidget* parent)
    : CZoomableView(parent),
      m_doc(doc),
      m_feed(doc.Model(), doc.CameraPictures(), [this] { TakePicture(); }),
      m_preview(doc.Preview()),
      m_input(doc.Model(), doc.Camera()),
      m_path(doc),
      m_handles(doc, [this](const std::string& text) { TellStatus(text); }),
      m_spacing(doc, [this]() -> const CCameraMarks& { return Marks(); }) {
    setObjectName("camera view");
    setAccessibleName("Camera view");
    viewport()->setBackgroundRole(QPalette::Dark);
    m_doc.Views().Add(*this);
    UpdateScrollSizes();
}

CCameraView::~CCameraView() {
    m_doc.Views().Remove(*this);
}

void CCameraView::OnUpdate(UpdateHint hint) {
    if (Holds(hint, UpdateHint::Preview))
        ShowPreview();
    if (Holds(hint, pictureHint | UpdateHint::Cells | UpdateHint::Levels))
        m_marks.reset();
    if (Holds(hint, pictureHint | UpdateHint::Cells | UpdateHint::Levels | UpdateHint::Paper) &&
        m_doc.Paper().RefreshCamera())
        TakeOnion();
    if (!Holds(hint, UpdateHint::CameraRedraw)) {
        // Condensing, expanding and reversing only say that cells have changed; the frame shown may be among them.
        if (Holds(hint, UpdateHint::Cells) && HasImage()) {
            m_feed.Follow();
            viewport()->update();
        }
        return;
    }
    if (!HasImage()) {
        m_input.Forget();
        m_hand = nullptr;
        DropDrag();
        m_feed.Forget();
    } else if (Holds(hint, UpdateHint::CameraCompose)) {
        m_feed.Renew();
    } else {
        m_feed.Follow();
    }
    FitScene();
    UpdateScrollSizes();
    RefreshCursor();
    viewport()->update();
}

void CCameraView::FitScene() {
    const CSceneModel& model = m_doc.Model();
    const std::string scene = model.sceneOpen ? model.databaseFolder + model.sceneName : std::string();
    if (m_scene == scene) {
        Refit();
        return;
    }
    m_scene = scene;
    Fit(CZoomLevel()); // more would show pixels rather than a picture
}

QSize CCameraView::minimumSizeHint() const {
    return {20, 20};
}

bool CCameraView::HasImage() const {
    return m_doc.Model().sceneOpen;
}

CSize CCameraView::ImageSize() const {
    return HasImage() ? m_doc.Model().Scene().geometry.Frame() : CSize{};
}

CViewCursor CCameraView::CursorNow() const {
    const std::string ofHand = HasImage() && !IsPanning() ? HandCursor() : std::string();
    if (ofHand.empty())
        return {CursorNameOf(m_doc.Model(), IsPanning()), hotSpot};
    return {ofHand, hotSpot};
}

bool CCameraView::BeginTool(CPoint at) {
    m_hand = HandAt(m_pointer.at);
    if (m_hand == nullptr) {
        m_input.Begin(at, Mapping());
        return true;
    }
    m_handCursor = m_hand->CursorAt(m_pointer.at, Mapping());
    m_handled = m_pointer;
    m_hasMoved = false;
    if (!m_hand->Press(m_pointer, Mapping()))
        m_hand = nullptr;
    return m_hand != nullptr;
}

void CCameraView::MoveHand() {
    m_hasMoved = m_hasMoved || m_pointer.at != m_handled.at;
    if (!m_hasMoved || (m_handled.at == m_pointer.at && m_handled.keys == m_pointer.keys))
        return; // a click changes nothing
    m_handled = m_pointer;
    m_hand->Move(m_pointer, Mapping());
    viewport()->update();
}

void CCameraView::MoveTool(CPoint to) {
    if (m_hand == nullptr) {
        m_input.Move(to, Mapping());
        return;
    }
    MoveHand();
}

void CCameraView::EndTool(CPoint at) {
    if (m_hand == nullptr) {
        m_input.End(at, Mapping());
        return;
    }
    MoveHand();
    std::exchange(m_hand, nullptr)->Release();
    RefreshCursor();
    viewport()->update();
}

void CCameraView::LoseTool() {
    if (ICameraHand* hand = std::exchange(m_hand, nullptr))
        hand->Release();
    else
        m_input.EndUnseen(Mapping());
}

void CCameraView::GiveUpHand() {
    if (ICameraHand* hand = std::exchange(m_hand, nullptr))
        hand->GiveUp();
    DropDrag();
    viewport()->update();
}

void CCameraView::TogglePathDrawing() {
    if (m_hand != nullptr)
        GiveUpHand();
    m_path.SetOn(!m_path.IsOn());
    RefreshCursor();
}

ICameraHand* CCameraView::HandAt(CRealPoint client) const {
    if (m_preview.HasPicture()) // of another frame, without its marks
        return nullptr;
    for (ICameraHand* hand : m_hands)
        if (!hand->CursorAt(client, Mapping()).empty())
            return hand;
    return nullptr;
}

std::string CCameraView::HandCursor() const {
    if (m_hand != nullptr)
        return m_handCursor;
    const ICameraHand* hand = IsToolDown() ? nullptr : HandAt(m_pointer.at);
    return hand != nullptr ? hand->CursorAt(m_pointer.at, Mapping()) : std::string();
}

void CCameraView::TapSpace() {
    if (m_tapped)
        m_tapped();
}

void CCameraView::ShowPreview() {
    const bool wasShown = m_preview.HasPicture();
    TellPreviewSize();
    m_preview.Follow(ImageSize().width, Zoom(), devicePixelRatioF());
    if (m_preview.HasPicture() || wasShown)
        viewport()->update();
    // The cursor's picture takes its place, which may be there already: whoever ends playing then moves the cursor.
    if (!m_doc.Preview().IsPlaying())
        QMetaObject::invokeMethod(
            viewport(),
            [this] {
                if (!m_doc.CameraPictures().Orders().IsComposing())
                    TakePicture();
            },
            Qt::QueuedConnection);
    TellState();
}

void CCameraView::TellPreviewSize() {
    m_doc.Preview().SetViewFactor(Zoom().Factor() * devicePixelRatioF());
}

void CCameraView::AfterZoom() {
    TellPreviewSize();
    m_input.FollowZoom(Mapping());
    TakePicture();
    TakeOnion();
}

void CCameraView::NotePointer(const QMouseEvent& event) {
    m_pointer = {{event.position().x(), event.position().y()}, event.modifiers()};
}

void CCameraView::mousePressEvent(QMouseEvent* event) {
    NotePointer(*event);
    CZoomableView::mousePressEvent(event);
}

void CCameraView::mouseMoveEvent(QMouseEvent* event) {
    NotePointer(*event);
    CZoomableView::mouseMoveEvent(event);
    if (!IsDragging())
        RefreshCursor();
}

void CCameraView::mouseReleaseEvent(QMouseEvent* event) {
    NotePointer(*event);
    CZoomableView::mouseReleaseEvent(event);
}

void CCameraView::mouseDoubleClickEvent(QMouseEvent* event) {
    // Its second press begins no camera input. Scrolling may begin as often as it likes.
    if (event->button() == Qt::MiddleButton)
        mousePressEvent(event);
}

void CCameraView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space) {
        CZoomableView::keyPressEvent(event);
        return;
    }
    if (event->key() == Qt::Key_Escape && m_doc.Preview().IsPlaying()) {
        m_doc.Preview().GoBack();
        return;
    }
    if (KeyToHands(*event, true))
        return;
    const CSceneModel& model = m_doc.Model();
    std::optional<int> frame = FrameOfKey(*event, model);
    if (frame && m_doc.Preview().IsPlaying()) {
        m_doc.Preview().Stop(); // and from there
        frame = FrameOfKey(*event, model);
    }
    if (!frame)
        event->ignore();
    else if (!IsDragging() && *frame != model.cursorFrame)
        MoveCursor(m_doc, {model.cursorLevel, *frame}, false);
}

void CCameraView::keyReleaseEvent(QKeyEvent* event) {
    if (!KeyToHands(*event, false))
        CZoomableView::keyReleaseEvent(event);
}

// What is held down means something to what is dragged, even before the mouse moves on.
bool CCameraView::KeyToHands(const QKeyEvent& event, bool isPressed) {
    const bool isShift = event.key() == Qt::Key_Shift;
    if (m_hand != nullptr && (isShift || event.key() == Qt::Key_Control)) {
        m_pointer.keys.setFlag(isShift ? Qt::ShiftModifier : Qt::ControlModifier, isPressed);
        MoveHand();
        return true;
    }
    if (event.key() != Qt::Key_Escape || !isPressed || (m_hand == nullptr && !m_path.IsOn()))
        return false;
    if (m_hand != nullptr)
        GiveUpHand();
    else
        TogglePathDrawing();
    return true;
}

void CCameraView::TakePicture() {
    m_preview.LetGo();
    const QImage& image = m_feed.Image();
    m_picture = image.isNull() ? image : ReadyForZoom(image, Zoom(), devicePixelRatioF());
    viewport()->update();
}

void CCameraView::TakeOnion() {
    const QImage onion = ToImage(m_doc.Paper().CameraSheet());
    m_onion = onion.isNull() ? onion : ReadyForZoom(onion, Zoom(), devicePixelRatioF());
    viewport()->update();
}

const CCameraMarks& CCameraView::Marks() {
    if (!m_marks)
        m_marks = CollectCameraMarks(m_doc.Model(), m_doc.Cells());
    m_marks->hasGrips = m_doc.CameraAids().Choices().spacing;
    return *m_marks;
}

void CCameraView::showEvent(QShowEvent* event) {
    QAbstractScrollArea::showEvent(event);
    RefreshCursor();
    if (HasImage() && m_feed.Image().isNull())
        OnUpdate(pictureHint);
}

QRect CCameraView::PictureRect() const {
    const CViewMapping mapping = Mapping();
    const CPoint origin = mapping.Origin();
    const CSize displayed = mapping.Displayed();
    return {origin.x, origin.y, displayed.width, displayed.height};
}

void CCameraView::paintEvent(QPaintEvent* event) {
    if (!HasImage())
        return;
    QPainter painter(viewport());
    if (m_preview.HasPicture()) {
        PaintPicture(painter, event->rect(), m_preview.Picture());
        const std::optional<int> played = m_doc.Preview().Frame();
        const bool follows = m_doc.Preview().Choices().followsCamera;
        PaintGuidesOver(painter, follows && played ? *played : m_doc.Model().cursorFrame);
        return;
    }
    PaintPicture(painter, event->rect(), m_picture);
    if (!m_onion.isNull() && !m_picture.isNull())
        PaintOnion(painter);
    PaintGuidesOver(painter, m_doc.Model().cursorFrame);
    PaintCameraMarks(painter, Marks(), PictureMapping());
    m_path.Paint(painter, PictureMapping());
    if (m_picture.isNull() || m_feed.IsLate())
        PaintText(painter);
}

CPictureMapping CCameraView::PictureMapping() const {
    return {PictureRect().topLeft(), Zoom().Factor(), m_doc.Model().Scene().geometry.height};
}

void CCameraView::PaintGuidesOver(QPainter& painter, int frame) {
    const CScene& scene = m_doc.Model().Scene();
    if (const CCameraAidChoices& choices = m_doc.CameraAids().Choices(); choices.HasGuides())
        PaintGuides(painter, choices, {scene.geometry.Frame(), scene.camera.At(frame)}, PictureMapping(), {});
}

void CCameraView::PaintPicture(QPainter& painter, const QRect& exposed, const QImage& image) {
    const QRect picture = PictureRect();
    if (image.isNull()) {
        painter.fillRect(picture, QColor(waitingColor));
        return;
    }
    const QRect shown = exposed.intersected(picture).translated(-picture.topLeft());
    if (shown.isEmpty())
        return;
    // Whole pixels of the picture, of which the paint event clips the rest.
    const double perViewX = static_cast<double>(image.width()) / picture.width();
    const double perViewY = static_cast<double>(image.height()) / picture.height();
    const QRect source =
        QRectF(shown.x() * perViewX, shown.y() * perViewY, shown.width() * perViewX, shown.height() * perViewY)
            .toAlignedRect()
            .intersected(image.rect());
    const QRectF target(picture.x() + source.x() / perViewX, picture.y() + source.y() / perViewY,
                        source.width() / perViewX, source.height() / perViewY);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(target, image, source);
}

// Light from below, as on a light table: whatever the picture shows, the skins are seen through it.
void CCameraView::PaintOnion(QPainter& painter) {
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.drawImage(PictureRect(), m_onion);
    painter.restore();
}

void CCameraView::PaintText(QPainter& painter) {
    const QString text = "rendering...";
    const QSize size = painter.fontMetrics().size(0, text) + QSize(28, 14);
    const QRect box(QPoint((viewport()->width() - size.width()) / 2, (viewport()->height() - size.height()) / 2),
                    size);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(waitingColor));
    painter.drawRoundedRect(box, 6, 6);
    painter.setPen(Qt::white);
    painter.drawText(box, Qt::AlignCenter, text);
}

} // namespace velmor
