#include "views/capture/CapturePreview.h"

#include "acquire/CaptureLines.h"
#include "acquire/CaptureSession.h"
#include "image/CelImg.h"

#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <span>

namespace velmor {

namespace {

constexpr int lookInterval = 8; // ms: no frame waits long enough to be seen to
constexpr double nearlyOwnSize = 1.05;
constexpr QRgb lineColor = 0xff000000;
constexpr QRgb paperColor = 0xffffffff;
constexpr QRgb onionColor = 0xff1d6fe0; // told from the black lines and from most of what is filmed
const auto surround = QColor::fromRgb(0x24, 0x26, 0x29); // a picture is judged against dark grey
const auto surroundText = QColor::fromRgb(0xc8, 0xcb, 0xd0);

// The frame's own bytes.
QImage PictureOf(const CCaptureFrame& frame) {
    return QImage(frame.bytes.data(), frame.width, frame.height, qsizetype{frame.width} * 4, QImage::Format_RGB32);
}

void FillLines(QImage& image, const CCaptureFrame& frame, int threshold, QRgb line, QRgb paper) {
    const auto count = static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
    MarkLines(frame, threshold, {reinterpret_cast<QRgb*>(image.bits()), count}, line, paper);
}

} // namespace

void PositionWindows(QWidget& dialog, const CCapturePreview& preview, const CCaptureSession& session) {
    const std::optional<CSize> picture = session.WindowSize();
    if (!picture || dialog.isMaximized())
        return;
    const int wanted = dialog.height() - preview.height() + preview.width() * picture->height / picture->width;
    dialog.resize(dialog.width(), std::min(wanted, dialog.screen()->availableSize().height() * 9 / 10));
}

QImage OnionOf(const CCaptureFrame& frame, std::optional<int> threshold) {
    if (!threshold)
        return PictureOf(frame).copy();
    QImage lines(frame.width, frame.height, QImage::Format_ARGB32_Premultiplied);
    FillLines(lines, frame, *threshold, onionColor, 0);
    return lines;
}

QImage OnionOf(const CCelImg& cel) {
    QImage lines(cel.Width(), cel.Height(), QImage::Format_ARGB32_Premultiplied);
    lines.fill(0);
    for (int y = 0; y < cel.Height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(lines.scanLine(cel.Height() - 1 - y));
        for (int x = 0; x < cel.Width(); ++x)
            if (cel.IsLine(x, y))
                row[x] = onionColor;
    }
    return lines;
}

CCapturePreview::CCapturePreview(const CCaptureSession& session) : m_session(session), m_timer(new QTimer(this)) {
    setObjectName("captureWindow");
    setWindowTitle("Velmor Capture Window");
    setAccessibleName("Velmor Capture Window");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_timer->setTimerType(Qt::PreciseTimer);
    m_timer->setInterval(lookInterval);
    connect(m_timer, &QTimer::timeout, this, [this] { TakeNewest(); });
}

void CCapturePreview::showEvent(QShowEvent*) {
    m_timer->start();
}

void CCapturePreview::hideEvent(QHideEvent*) {
    m_timer->stop();
}

void CCapturePreview::TakeNewest() {
    const std::shared_ptr<const CCaptureFrame> newest = m_session.ShownFrame();
    const bool hasFailed = m_session.HasFailed();
    if (newest == m_frame && hasFailed == m_hasFailed)
        return;
    m_frame = newest;
    m_hasFailed = hasFailed;
    TakeFrame();
}

void CCapturePreview::TakeFrame() {
    if (m_frame && m_threshold) {
        const QSize size(m_frame->width, m_frame->height);
        if (m_lines.size() != size)
            m_lines = QImage(size, QImage::Format_RGB32);
        if (!m_lines.isNull())
            FillLines(m_lines, *m_frame, *m_threshold, lineColor, paperColor);
    }
    update();
}

void CCapturePreview::ShowLines(std::optional<int> threshold) {
    if (threshold == m_threshold)
        return;
    m_threshold = threshold;
    TakeFrame();
}

void CCapturePreview::SetOnion(QImage onion) {
    m_onion = std::move(onion);
    update();
}

void CCapturePreview::SetOnionPercent(int percent) {
    m_onionPercent = percent;
    update();
}

void CCapturePreview::SetHint(const QString& hint) {
    m_hint = hint;
    update();
}

QImage CCapturePreview::Shown() const {
    if (!m_frame)
        return {};
    return m_threshold ? m_lines : PictureOf(*m_frame);
}

QRectF CCapturePreview::PlaceOf(const QImage& picture) const {
    const QSizeF own = QSizeF(picture.size()) / devicePixelRatioF();
    QSizeF size = own.scaled(this->size(), Qt::KeepAspectRatio);
    // Nearly its own size is shown as its own size: it is sharper, and costs nothing.
    if (size.width() >= own.width() && size.width() < own.width() * nearlyOwnSize)
        size = own;
    return {QPointF(std::floor((width() - size.width()) / 2), std::floor((height() - size.height()) / 2)), size};
}

void CCapturePreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QImage picture = Shown();
    painter.fillRect(rect(), surround);
    if (picture.isNull()) {
        painter.setPen(surroundText);
        painter.drawText(rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap,
                         m_hasFailed ? "The camera gives no more pictures.\nPreview connects it again." : m_hint);
        return;
    }
    // Enlarged or made smaller, pixel rows would come and go; at the picture's own size nothing is to be blurred.
    const QRectF place = PlaceOf(picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform,
                          place.size() * devicePixelRatioF() != QSizeF(picture.size()));
    painter.drawImage(place, picture);
    if (m_onionPercent > 0 && !m_onion.isNull()) {
        painter.setOpacity(m_onionPercent / 100.0);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(PlaceOf(m_onion), m_onion);
    }
}

} // namespace velmor
