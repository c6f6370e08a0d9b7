#include "FuzzTarget.h"
#include "platform/files/TiffReader.h"

// Small pictures, so that what is asked for stays small as well.
void velmor::fuzz::Read(Bytes input) {
    constexpr int largestSide = 256;
    CReadTiff picture;
    if (ReadTiff(input, largestSide, picture) == TiffResult::Done)
        Require(picture.width <= largestSide && picture.height <= largestSide && !picture.bytes.empty());
    else
        Require(picture.bytes.empty());
}
