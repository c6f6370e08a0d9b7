#include "FuzzTarget.h"
#include "image/import/DibDecoder.h"

// A bitmap in memory, as cameras and scanners hand it over.
void velmor::fuzz::Read(Bytes input) {
    CDibDecoder decoder;
    if (CDibDecoder::OpenPacked(input, decoder) != DibResult::Done)
        return;
    CCelImg image;
    static_cast<void>(ImportRows(image, decoder, ImportKind::Cel, 128, "grabbed", "f"));
    Require(!image.IsModified());
}
