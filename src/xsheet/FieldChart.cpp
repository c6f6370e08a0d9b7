#include "xsheet/FieldChart.h"

#include <algorithm>

namespace velmor {

namespace {

CRealRect About(CRealPoint centre, double width, double height) {
    return {centre.x - width / 2, centre.y - height / 2, centre.x + width / 2, centre.y + height / 2};
}

} // namespace

CRealRect WholeFrame(CSize frame) {
    return {0, 0, static_cast<double>(frame.width), static_cast<double>(frame.height)};
}

CRealRect FieldOf(CSize frame, int field, int fields) {
    const CRealRect whole = WholeFrame(frame);
    return About(whole.Centre(), whole.Width() * field / fields, whole.Height() * field / fields);
}

CRealRect FrameOfRatio(CSize frame, double ratio) {
    const CRealRect whole = WholeFrame(frame);
    return About(whole.Centre(), std::min(whole.Width(), whole.Height() * ratio),
                 std::min(whole.Height(), whole.Width() / ratio));
}

CRealRect SafeArea(const CRealRect& frame, int percent) {
    const double part = std::clamp(percent, 1, 100) / 100.0;
    return About(frame.Centre(), frame.Width() * part, frame.Height() * part);
}

} // namespace velmor
