#include "views/player/MovieScreen.h"

#include <QImage>
#include <QPainter>
#include <cmath>

namespace velmor {

namespace {

constexpr int bytesPerPixel = 4;

bool IsWhole(double number) {
    return number == std::floor(number);
}

} // namespace

CMovieScreen::CMovieScreen(QSize movie) : m_geometry{movie} {
    setObjectName("screen");
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(1, 1);
    setAccessibleName("Movie");
}

void CMovieScreen::Refresh() {
    update(PictureRect());
}

void CMovieScreen::SetDoubled(bool doubled) {
    m_geometry.doubled = doubled;
    update();
}

QRect CMovieScreen::PictureRect() const {
    return m_geometry.Picture(contentsRect().size()).translated(contentsRect().topLeft());
}

void CMovieScreen::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    if (m_picture.bytes.empty())
        return;
    // A view on the bytes, which copies nothing.
    const QImage image(m_picture.bytes.data(), m_picture.width, m_picture.height,
                       qsizetype{m_picture.width} * bytesPerPixel, QImage::Format_RGB32);
    QPainter painter(this);
    painter.setClipRect(contentsRect());
    // On a screen between the scales, doubling only some of the lines would tear them.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !IsWhole(devicePixelRatioF()));
    painter.drawImage(PictureRect(), image);
}

} // namespace velmor
