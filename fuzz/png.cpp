#include "FuzzTarget.h"
#include "platform/files/PngReader.h"

// Small pictures, so that what is asked for stays small as well.
void velmor::fuzz::Read(Bytes input) {
    constexpr int largestSide = 256;
    CReadPng picture;
    if (ReadPng(input, largestSide, picture) == PngResult::Done)
        Require(picture.width <= largestSide && picture.height <= largestSide && !picture.bytes.empty());
    else
        Require(picture.bytes.empty());
}
