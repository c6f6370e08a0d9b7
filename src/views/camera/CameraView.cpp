#include "views/camera/CameraView.h"

#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/Icons.h"
#include "views/camera/CameraMarksPainter.h"
#include "views/camera/PictureImage.h"

#include <QCursor>
#include <QMenu>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cstring>

namespace velmor {

namespace {

constexpr QRgb waitingColor = 0xff404040;
constexpr CZoomLevel largestFit{64};

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
    : QAbstractScrollArea(parent),
      m_doc(doc),
      m_feed(doc.Model(), doc.CameraPictures(), [this] { TakePicture(); }) {
    setObjectName("camera view");
    setAccessibleName("Camera view");
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true); // a button let go unseen shows in the next motion
    viewport()->setBackgroundRole(QPalette::Dark);
    m_doc.Views().Add(*this);
    SetScrolls();
}

CCameraView::~CCameraView() {
    m_doc.Views().Remove(*this);
}

void CCameraView::SetContextMenu(QMenu* menu) {
    m_menu = menu;
}

void CCameraView::ZoomIn() {
    ZoomTo(m_zoom.In());
}

void CCameraView::ZoomOut() {
    ZoomTo(m_zoom.Out());
}

void CCameraView::ZoomOneToOne() {
    ZoomTo(CZoomLevel());
}

void CCameraView::ZoomTo(CZoomLevel zoom) {
    m_largestFit.reset();
    SetZoom(zoom);
}

void CCameraView::FitToWindow() {
    m_largestFit = largestFit;
    Fit();
}

void CCameraView::Fit() {
    if (!m_largestFit || !IsSceneOpen())
        return;
    const QSize room = maximumViewportSize();
    const CZoomLevel zoom =
        FittingZoom(m_doc.Model().Scene().geometry.Frame(), {room.width(), room.height()}, *m_largestFit);
    if (zoom != m_zoom)
        SetZoom(zoom);
}

void CCameraView::ShowOpenedScene() {
    const CSceneModel& model = m_doc.Model();
    const std::string scene = model.sceneOpen ? model.databaseFolder + model.sceneName : std::string();
    if (m_scene == scene)
        return;
    m_scene = scene;
    m_largestFit = CZoomLevel(); // more would show pixels rather than a picture
}

void CCameraView::TogglePan() {
    m_panMode = !m_panMode;
    UpdateCursor();
}

void CCameraView::OnUpdate(UpdateHint hint) {
    if (Holds(hint, pictureHint | UpdateHint::Cells | UpdateHint::Levels))
        m_marks.reset();
    if (!Holds(hint, UpdateHint::CameraRedraw)) {
        // Condensing, expanding and reversing only say that cells have changed; the frame shown may be among them.
        if (Holds(hint, UpdateHint::Cells) && IsSceneOpen()) {
            m_feed.Follow();
            viewport()->update();
        }
        return;
    }
    ShowOpenedScene();
    if (!IsSceneOpen()) {
        m_drag.reset();
        m_feed.Forget();
    } else if (Holds(hint, UpdateHint::CameraCompose)) {
        m_feed.Renew();
    } else {
        m_feed.Follow();
    }
    Fit();
    SetScrolls();
    UpdateCursor();
    viewport()->update();
}

QSize CCameraView::minimumSizeHint() const {
    return {20, 20};
}

bool CCameraView::IsSceneOpen() const {
    return m_doc.Model().sceneOpen;
}

// The scaled frame in the viewport: centred where it is smaller, scrolled where it is larger.
QRect CCameraView::PictureRect() const {
    const CSize frame = m_doc.Model().Scene().geometry.Frame();
    const QSize total(m_zoom.Scaled(frame.width), m_zoom.Scaled(frame.height));
    const QPoint scroll = ScrollPosition();
    const QSize client = viewport()->size();
    return {QPoint(client.width() > total.width() ? (client.width() - total.width()) / 2 : -scroll.x(),
                   client.height() > total.height() ? (client.height() - total.height()) / 2 : -scroll.y()),
            total};
}

void CCameraView::SetScrolls() {
    const CSize frame = m_doc.Model().Scene().geometry.Frame();
    const bool open = IsSceneOpen();
    const QSize total = open ? QSize(m_zoom.Scaled(frame.width), m_zoom.Scaled(frame.height)) : QSize();
    // Bars that the picture does not need must not keep each other.
    const QSize whole = maximumViewportSize();
    const bool fits = total.width() <= whole.width() && total.height() <= whole.height();
    const auto set = [&](QScrollBar& bar, int length, int client) {
        bar.setSingleStep(1);
        bar.setPageStep(open ? length / 10 : 10);
        bar.setRange(0, fits ? 0 : std::max(0, length - client));
    };
    set(*horizontalScrollBar(), total.width(), viewport()->width());
    set(*verticalScrollBar(), total.height(), viewport()->height());
}

void CCameraView::SetZoom(CZoomLevel zoom) {
    const CSize frame = m_doc.Model().Scene().geometry.Frame();
    const QSize client = viewport()->size();
    const QPoint before = ScrollPosition();
    const QPoint after(ScrollAfterZoom(before.x(), client.width(), zoom.Scaled(frame.width), m_zoom, zoom),
                       ScrollAfterZoom(before.y(), client.height(), zoom.Scaled(frame.height), m_zoom, zoom));
    m_zoom = zoom;
    SetScrolls();
    ScrollTo(after);
    if (m_drag && m_drag->input)
        m_drag->input = NewInput(m_drag->last);
    TakePicture();
    if (m_zoomChanged)
        m_zoomChanged();
}

// Keeps what is under `point` there.
void CCameraView::SetZoomAt(CZoomLevel zoom, QPoint point) {
    const QPointF inPicture = QPointF(point - PictureRect().topLeft()) * (zoom.Factor() / m_zoom.Factor());
    ZoomTo(zoom);
    ScrollTo(inPicture.toPoint() - point);
    if (m_drag && m_drag->input)
        m_drag->input = NewInput(m_drag->last);
}

void CCameraView::ScrollTo(QPoint position) {
    horizontalScrollBar()->setValue(position.x());
    verticalScrollBar()->setValue(position.y());
}

QPoint CCameraView::ScrollPosition() const {
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void CCameraView::TakePicture() {
    const QImage& image = m_feed.Image();
    m_picture = image.isNull() ? image : ReadyForZoom(image, m_zoom, devicePixelRatioF());
    viewport()->update();
}

void CCameraView::UpdateCursor() {
    const char* name = CursorNameOf(m_doc.Model(), IsPanning());
    const double scale = devicePixelRatioF();
    if (m_cursorName != nullptr && std::strcmp(name, m_cursorName) == 0 && scale == m_cursorScale)
        return;
    m_cursorName = name;
    m_cursorScale = scale;
    viewport()->setCursor(ToolCursor(name, 16, 16, scale));
}

bool CCameraView::IsPanning() const {
    return m_drag ? !m_drag->input : m_panMode || m_spaceHeld;
}

const CCameraMarks& CCameraView::Marks() {
    if (!m_marks)
        m_marks = CollectCameraMarks(m_doc.Model(), m_doc.Cells());
    return *m_marks;
}

bool CCameraView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Enter && m_cursorScale != devicePixelRatioF()) {
        // The window has come to another screen.
        UpdateCursor();
        TakePicture();
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void CCameraView::resizeEvent(QResizeEvent*) {
    Fit();
    SetScrolls();
}

void CCameraView::showEvent(QShowEvent* event) {
    QAbstractScrollArea::showEvent(event);
    UpdateCursor();
    if (IsSceneOpen() && m_feed.Image().isNull())
        OnUpdate(pictureHint);
}

void CCameraView::scrollContentsBy(int, int) {
    viewport()->update();
}

void CCameraView::paintEvent(QPaintEvent* event) {
    if (!IsSceneOpen())
        return;
    QPainter painter(viewport());
    PaintPicture(painter, event->rect());
    const QRect picture = PictureRect();
    PaintCameraMarks(painter, Marks(), {picture.topLeft(), m_zoom.Factor(), m_doc.Model().Scene().geometry.height});
    if (m_picture.isNull() || m_feed.IsLate())
        PaintText(painter);
}

void CCameraView::PaintPicture(QPainter& painter, const QRect& exposed) {
    const QRect picture = PictureRect();
    if (m_picture.isNull()) {
        painter.fillRect(picture, QColor(waitingColor));
        return;
    }
    const QRect shown = exposed.intersected(picture).translated(-picture.topLeft());
    if (shown.isEmpty())
        return;
    // Whole pixels of the picture, of which the paint event clips the rest.
    const double perViewX = static_cast<double>(m_picture.width()) / picture.width();
    const double perViewY = static_cast<double>(m_picture.height()) / picture.height();
    const QRect source =
        QRectF(shown.x() * perViewX, shown.y() * perViewY, shown.width() * perViewX, shown.height() * perViewY)
            .toAlignedRect()
            .intersected(m_picture.rect());
    const QRectF target(picture.x() + source.x() / perViewX, picture.y() + source.y() / perViewY,
                        source.width() / perViewX, source.height() / perViewY);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(target, m_picture, source);
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
