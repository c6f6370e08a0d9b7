#pragma once

#include "FuzzTarget.h"
#include "MemoryFile.h"
#include "image/CelImg.h"
#include "image/render/SourceReader.h"

namespace velmor::fuzz {

/// What is read straight into the form in which it is drawn is what the loaded image gives: `loaded` is what
/// loading `file` into `image` said.
inline void RequireSameSource(const Path& file, const CStatus& loaded, CCelImg image) {
    CPlacement placement;
    placement.antialias = true;
    CRenderPreparation preparation;
    std::shared_ptr<const CRenderSource> source;
    const CStatus read = ReadRenderSource(file, placement, preparation, source);
    Require(read.Message() == loaded.Message());
    if (!loaded)
        return;
    const CSize size{image.Width(), image.Height()};
    const CRenderSource plain(std::move(image), preparation);
    Require(source->IsOpaque() == plain.IsOpaque() && source->PaintedArea() == plain.PaintedArea() &&
            source->ByteCount() == plain.ByteCount());
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            Require(source->Pixels().At(x, y) == plain.Pixels().At(x, y));
            Require(source->UniformAreas().DistanceAt(x, y) == plain.UniformAreas().DistanceAt(x, y));
        }
}

/// Loads a stored image of either kind.
inline void ReadStoredImage(Bytes input) {
    const CMemoryFile file(input);
    CCelImg image;
    const CStatus loaded = image.Load(file.File());
    RequireSameSource(file.File(), loaded, image);
    if (!loaded) {
        Require(image.GetLoadState() == LoadState::Nothing);
        return;
    }
    CSize size;
    Require(static_cast<bool>(CCelImg::GetDimensions(file.File(), size)));
    Require(size.width == image.Width() && size.height == image.Height());
}

} // namespace velmor::fuzz
