#include "views/camera/PictureImage.h"

#include "image/paper/Skins.h"
#include "render/FrameComposer.h"

#include <algorithm>

namespace velmor {

QImage ToImage(const CFrameBuffer& frame, int width) {
    const int columns = std::min(width, frame.width);
    QImage image(columns, frame.height, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        const std::uint8_t* bgr = frame.pixels.data() + static_cast<std::size_t>(frame.height - 1 - y) *
                                                            static_cast<std::size_t>(frame.width) * 3;
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < columns; ++x, bgr += 3)
            line[x] = qRgb(bgr[2], bgr[1], bgr[0]);
    }
    return image;
}

QImage ToImage(const CSkinSheet& sheet) {
    if (sheet.under.empty())
        return {};
    QImage image(sheet.size.width, sheet.size.height, QImage::Format_RGB32);
    const auto width = static_cast<std::size_t>(sheet.size.width);
    for (int y = 0; y < image.height(); ++y)
        std::transform(sheet.under.begin() + static_cast<std::ptrdiff_t>(width) * (image.height() - 1 - y),
                       sheet.under.begin() + static_cast<std::ptrdiff_t>(width) * (image.height() - y),
                       reinterpret_cast<QRgb*>(image.scanLine(y)),
                       [](std::uint32_t pixel) { return pixel | 0xff000000; });
    return image;
}

QImage ReadyForZoom(const QImage& picture, CZoomLevel zoom, double pixelRatio) {
    const QSize shown = QSize(zoom.Scaled(picture.width()), zoom.Scaled(picture.height())) * pixelRatio;
    if (shown.isEmpty() || shown.width() >= picture.width())
        return picture;
    return picture.scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace velmor
