#include "image/Palette.h"
#include "FuzzTarget.h"
#include "MemoryFile.h"

void velmor::fuzz::Read(Bytes input) {
    const CMemoryFile file(input);
    CPalette palette;
    static_cast<void>(LoadPalette(file.File(), palette));
}
