#pragma once

#include "platform/files/Files.h"

#include <QPixmap>
#include <list>
#include <optional>

namespace velmor {

class CCelImg;

/// Small pictures of cels and pictures, over a checkerboard where they are transparent. They are made when asked
/// for and kept until their file changes or too many others have been asked for.
class CAssetThumbnails {
public:
    static constexpr int width = 160; ///< at most, in logical pixels
    static constexpr int height = 120;
    static constexpr std::size_t mostKept = 64;

    /// `scale` is the highest of the screens that the thumbnails are shown on.
    explicit CAssetThumbnails(double scale);

    /// Reads a ".bit" or ".rgba" file, unless its thumbnail is there. Null when it cannot be read.
    QPixmap Find(const Path& file);

private:
    struct CEntry {
        Path file;
        CFileIdentity identity;
        QPixmap pixmap;
    };

    double m_scale;
    std::list<CEntry> m_entries; ///< the last used first
};

/// An image over a checkerboard, made smaller where it is larger than `most` logical pixels. `scale` is the
/// screen's.
QPixmap PaintThumbnail(const QImage& image, QSize most, double scale);

/// An image with its alpha, top row first as the screen has it; null when nothing is loaded.
QImage ToQImage(const CCelImg& image);

} // namespace velmor
