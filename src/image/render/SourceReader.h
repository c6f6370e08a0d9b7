#pragma once

#include "image/render/RenderSource.h"
#include "platform/Status.h"
#include "platform/files/Files.h"

#include <memory>

namespace velmor {

/// Reads a ".bit" or ".rgba" file and prepares it for a placement: gives exactly what CCelImg::Load() and
/// CRenderSource would, the messages of failures included. But what is read goes straight to where it is drawn
/// from; planes stand in memory only if the image is to be blurred. On failure `source` is unchanged.
CStatus ReadRenderSource(const Path& path, const CPlacement& placement, CRenderPreparation& preparation,
                         std::shared_ptr<const CRenderSource>& source);

} // namespace velmor
