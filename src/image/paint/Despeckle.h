#pragma once

#include "image/CelImg.h"

namespace velmor {

/// What specks leave behind.
enum class UnderSpecks {
    Paper,      ///< white
    Surrounding ///< what most of the pixels around a speck are painted with; white where there is none
};

/// Takes the specks off a cel: groups of at most `mostPixels` line pixels that touch one another, if only at their
/// corners, become paper or paint. Returns how many groups there were; 0 for anything but a cel.
int RemoveSpecks(CCelImg& cel, int mostPixels, UnderSpecks under = UnderSpecks::Paper);

} // namespace velmor
