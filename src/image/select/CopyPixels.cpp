#include "image/select/CopyPixels.h"

#include <algorithm>
#include <array>

namespace velmor {

void CopyPixels(const CCelImg& from, const CRect& rect, CCelImg& to) {
    const CRect part = Intersection(rect, {0, 0, to.Width(), to.Height()});
    if (part.IsEmpty())
        return;
    const int firstByte = part.x / 8;
    const int bytes = (part.endX + 7) / 8 - firstByte;
    for (int y = part.y; y < part.endY; ++y) {
        if (!to.LineMask().empty()) {
            const std::size_t start = static_cast<std::size_t>(y) * static_cast<std::size_t>(to.StrideBits() / 8) +
                                      static_cast<std::size_t>(firstByte);
            std::copy_n(from.LineMask().data() + start, bytes, to.LineMask().data() + start);
        }
        for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha})
            std::copy_n(from.PlaneOf(channel).data() + from.IndexOf(part.x, y), part.endX - part.x,
                        to.PlaneOf(channel).data() + to.IndexOf(part.x, y));
    }
}

} // namespace velmor
