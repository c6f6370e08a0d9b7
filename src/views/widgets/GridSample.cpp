#include "views/widgets/GridSample.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <qdrawutil.h>

namespace velmor {

namespace {

constexpr int sampleWidth = 240;
constexpr int sampleHeight = 96;
constexpr int bytesPerPixel = 3;

} // namespace

CGridSample::CGridSample() {
    setObjectName("sample");
    setFixedSize(sampleWidth, sampleHeight);
    setAccessibleName("Sample of the background");
    // An image without a file is no image; this one is never saved.
    if (m_transparent.CreatePicture(sampleWidth, sampleHeight, "sample"))
        std::ranges::fill(m_transparent.PlaneOf(Channel::Alpha), std::uint8_t{0});
    m_transparent.SetModified(false);
}

void CGridSample::Show(const CGridSettings& grid) {
    if (CreateBitmap(m_transparent, grid, m_bitmap))
        update();
}

void CGridSample::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!m_bitmap.bytes.empty()) {
        const QImage upsideDown(m_bitmap.bytes.data(), sampleWidth, sampleHeight,
                                qsizetype{m_bitmap.width} * bytesPerPixel, QImage::Format_BGR888);
        painter.drawImage(0, 0, upsideDown.mirrored(false, true));
    }
    qDrawPlainRect(&painter, rect(), palette().color(QPalette::Mid));
}

} // namespace velmor
