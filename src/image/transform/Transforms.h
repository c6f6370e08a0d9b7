#pragma once

#include "image/CelImg.h"
#include "platform/Status.h"

namespace velmor {

// Whole-image operations on a loaded cel or picture, in place. They set the modified flag; on failure the image is
// unchanged.

CStatus FlipX(CCelImg& image);
CStatus FlipY(CCelImg& image);

/// Turns the image counter-clockwise as it is seen on the screen by an angle in degrees; the result is as large as
/// the bounding box of the turned corners. Multiples of 90 are exact. Otherwise planes are sampled bilinearly and a
/// line mask to the nearest pixel; uncovered corners are transparent in a picture, white paper in a cel. Refuses a
/// result over 32767 pixels wide or high, or narrower or lower than 2.
CStatus Rotate(CCelImg& image, double degrees);

/// A place of an image, where it goes, and a turn around it. Places are between pixels as well: that of pixel (x,
/// y) is (x, y).
struct CTurnAndMove {
    double fromX = 0;
    double fromY = 0;
    double toX = 0;
    double toY = 0;
    double degrees = 0; ///< counter-clockwise as it is seen on the screen
    CSize size;         ///< of the result
};

/// Turns and moves the image, sampled as Rotate() does; what is uncovered is left as Rotate() leaves its corners.
/// Refuses the same sizes.
CStatus TurnAndMove(CCelImg& image, const CTurnAndMove& movement);

enum class ColorKeyProcess { Add = 0, Subtract = 1, Replace = 2 };
enum class ColorUnderKey { Keep, Black, White };

struct CColorKey {
    CColor color;      ///< alpha plays no part
    int tolerance = 5; ///< 0 to 255, each of red, green and blue
    ColorKeyProcess process = ColorKeyProcess::Add;
    ColorUnderKey under = ColorUnderKey::Keep;
};

/// Keys a picture: the pixels whose red, green and blue all lie within the tolerance of the key colour become
/// transparent besides what is already (Add), become opaque (Subtract), or are the only ones transparent (Replace).
CStatus ColorKey(CCelImg& image, const CColorKey& key);

} // namespace velmor
