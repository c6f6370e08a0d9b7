#pragma once

#include "FuzzTarget.h"
#include "MemoryFile.h"
#include "image/CelImg.h"

namespace velmor::fuzz {

/// Loads a stored image of either kind.
inline void ReadStoredImage(Bytes input) {
    const CMemoryFile file(input);
    CCelImg image;
    if (!image.Load(file.File())) {
        Require(image.GetLoadState() == LoadState::Nothing);
        return;
    }
    CSize size;
    Require(static_cast<bool>(CCelImg::GetDimensions(file.File(), size)));
    Require(size.width == image.Width() && size.height == image.Height());
}

} // namespace velmor::fuzz
