#include "image/transform/Transforms.h"

#include <algorithm>

namespace velmor {

namespace {

/// The values of a channel within the tolerance of the key, as an offset and a length.
struct CKeyRange {
    CKeyRange(int key, int tolerance)
        : first(static_cast<std::uint8_t>(std::max(key - tolerance, 0))),
          length(static_cast<std::uint8_t>(std::min(key + tolerance, 255) - first)) {}
    bool Holds(std::uint8_t value) const { return static_cast<std::uint8_t>(value - first) <= length; }

    std::uint8_t first;
    std::uint8_t length;
};

} // namespace

CStatus ColorKey(CCelImg& image, const CColorKey& key) {
    if (image.GetLoadState() != LoadState::Picture)
        return CStatus::Failure("Internal Error : no picture image loaded in CCelImg::ColorKey");
    const int tolerance = std::clamp(key.tolerance, 0, 255);
    const CKeyRange reds(key.color.red, tolerance), greens(key.color.green, tolerance),
        blues(key.color.blue, tolerance);
    const int keyedAlpha = key.process == ColorKeyProcess::Subtract ? 255 : 0;
    const int othersAlpha = key.process == ColorKeyProcess::Replace ? 255 : 0;
    const int recolored = key.under == ColorUnderKey::Keep ? 0 : 255;
    const int colorUnder = key.under == ColorUnderKey::White ? 255 : 0;
    const auto under = [=](std::uint8_t value, int keyed) {
        return static_cast<std::uint8_t>((value & ~(keyed & recolored)) | (keyed & colorUnder));
    };

    std::uint8_t* const red = image.PlaneOf(Channel::Red).data();
    std::uint8_t* const green = image.PlaneOf(Channel::Green).data();
    std::uint8_t* const blue = image.PlaneOf(Channel::Blue).data();
    std::uint8_t* const alpha = image.PlaneOf(Channel::Alpha).data();
    const std::size_t count = image.PlaneOf(Channel::Red).size();
    for (std::size_t i = 0; i < count; ++i) {
        // All bits set for a keyed pixel: without branches the loop is done on many pixels at a time.
        const int keyed = -(int{reds.Holds(red[i])} & int{greens.Holds(green[i])} & int{blues.Holds(blue[i])});
        alpha[i] = static_cast<std::uint8_t>((keyed & keyedAlpha) | (~keyed & (alpha[i] | othersAlpha)));
        red[i] = under(red[i], keyed);
        green[i] = under(green[i], keyed);
        blue[i] = under(blue[i], keyed);
    }
    image.SetModified(true);
    return {};
}

} // namespace velmor
