#include "scene/paper/FlippedPicture.h"

#include "render/ImageCache.h"

#include <new>

namespace velmor {

CStatus FlippedPicture(const Path& file, CSize sheet, const CGridSettings& grid, CImageCache& images,
                       CDisplayBitmap& bitmap) {
    CPlacement placement;
    placement.centreX = sheet.width / 2;
    placement.centreY = sheet.height / 2;
    std::shared_ptr<const CRenderSource> source;
    if (const CStatus read = images.Get(file, placement, source); !read)
        return CStatus::Failure(read.Message() + ":: Reading file ->" + Utf8Of(file));
    try {
        bitmap = EmptyBitmap(sheet, grid);
        source->DrawRows(placement, {bitmap.bytes, bitmap.width, bitmap.height}, 0, bitmap.height);
    } catch (const std::bad_alloc&) {
        return CStatus::Failure("Could not create bitmap");
    }
    return {};
}

} // namespace velmor
