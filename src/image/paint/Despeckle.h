#pragma once

#include "image/CelImg.h"

namespace velmor {

/// Takes the specks off a cel: groups of at most `mostPixels` line pixels that touch one another, if only at their
/// corners, become white paper. Returns how many groups there were; 0 for anything but a cel.
int RemoveSpecks(CCelImg& cel, int mostPixels);

} // namespace velmor
