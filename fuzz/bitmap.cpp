#include "FuzzTarget.h"
#include "MemoryFile.h"
#include "image/import/ImageReaders.h"

void velmor::fuzz::Read(Bytes input) {
    const CMemoryFile file(input);
    CCelImg image;
    if (ReadBitmapPicture(image, file.File(), "f"))
        Require(image.GetLoadState() == LoadState::Picture);
    if (ReadBitmapCel(image, file.File(), 128, "f"))
        Require(image.GetLoadState() == LoadState::Cel);
    Require(!image.IsModified());
}
