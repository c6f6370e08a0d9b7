#pragma once

#include "platform/camera/CaptureDriver.h"

#include <QImage>
#include <QWidget>
#include <memory>
#include <optional>

class QTimer;

namespace velmor {

class CCaptureSession;
class CCelImg;

/// The capture window: shows the frames of a session as they come, scaled to fit, on request as the lines that a
/// cel would get, and an onion skin of the frame grabbed before over them.
class CCapturePreview final : public QWidget {
public:
    /// The session outlives the widget.
    explicit CCapturePreview(const CCaptureSession& session);

    /// Shows which pixels fall below the threshold (0 to 255); the colours when there is none.
    void ShowLines(std::optional<int> threshold);
    /// What lies over the frames: a picture, or lines on a transparent ground.
    void SetOnion(QImage onion);
    /// 0 to 100.
    void SetOnionPercent(int percent);
    /// Says what to do where there is no frame to show.
    void SetHint(const QString& hint);

    /// The picture as it is shown, without the onion skin; null when there is none.
    QImage Shown() const;

    QSize sizeHint() const override { return {640, 480}; }
    QSize minimumSizeHint() const override { return {320, 240}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void TakeNewest();
    void TakeFrame();
    QRectF PlaceOf(const QImage& picture) const;

    const CCaptureSession& m_session;
    QTimer* m_timer;
    std::shared_ptr<const CCaptureFrame> m_frame; ///< the one that is shown
    bool m_hasFailed = false;
    std::optional<int> m_threshold;
    QImage m_lines; ///< of the frame, when they are shown
    QImage m_onion;
    int m_onionPercent = 0;
    QString m_hint;
};

/// Lays a dialog out around the session's picture: gives it the height at which the picture fills the preview's
/// width, if the screen has room for it.
void PositionWindows(QWidget& dialog, const CCapturePreview& preview, const CCaptureSession& session);

/// A grabbed frame as an onion skin: its lines when it became a cel, else the whole picture.
QImage OnionOf(const CCaptureFrame& frame, std::optional<int> threshold);
/// The lines of a cel as an onion skin.
QImage OnionOf(const CCelImg& cel);

} // namespace velmor
