#include "image/render/Render.h"

#include "image/render/RenderSource.h"

#include <exception>

namespace velmor {

CStatus Render(const CCelImg& image, const CPlacement& placement, CFrameView destination) {
    const LoadState kind = image.GetLoadState();
    if (kind == LoadState::Nothing)
        return CStatus::Failure("Internal Error : cel/picture is not loaded in Render");
    try {
        const CRenderSource source(image, PreparationFor(placement, kind));
        source.DrawRows(placement, destination, 0, destination.height);
    } catch (const std::exception&) {
        return CStatus::Failure("Unable to allocate memory for cel!");
    }
    return {};
}

} // namespace velmor
