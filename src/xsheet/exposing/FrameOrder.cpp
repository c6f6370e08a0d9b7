#include "xsheet/exposing/FrameOrder.h"

#include <algorithm>
#include <cstdint>

namespace velmor {

namespace {

std::size_t Bounded(std::int64_t count) {
    return static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, CXSheet::mostFramesInFile));
}

// Makes a level of its beginning, what is put there, and what comes behind, as `then` says by the frame.
template<class Then>
FrameOrder Composed(int frameCount, int first, const FrameOrder& put, Then then) {
    FrameOrder order(static_cast<std::size_t>(frameCount));
    for (int frame = 0; frame < frameCount; ++frame) {
        const std::int64_t place = std::int64_t{frame} - first;
        if (place < 0)
            order[static_cast<std::size_t>(frame)] = frame;
        else if (place < std::ssize(put))
            order[static_cast<std::size_t>(frame)] = put[static_cast<std::size_t>(place)];
        else
            order[static_cast<std::size_t>(frame)] = then(frame);
    }
    return order;
}

FrameOrder FramesOf(CFrameSpan part) {
    return Repeated(part, part.Length());
}

} // namespace

std::vector<CFrameSpan> ExposuresOf(const CXSheet& xsheet, int level, CFrameSpan part) {
    std::vector<CFrameSpan> exposures;
    for (int frame = part.first; frame < part.end; ++frame) {
        const bool goesOn =
            frame > part.first && xsheet.Cell(level, frame).ShowsSameAs(xsheet.Cell(level, frame - 1));
        if (!goesOn)
            exposures.push_back({frame, frame});
        exposures.back().end = frame + 1;
    }
    return exposures;
}

CFrameSpan ExposureAt(const CXSheet& xsheet, int level, int frame) {
    CFrameSpan exposure{frame, frame + 1};
    const CXSheetCell& cell = xsheet.Cell(level, frame);
    while (exposure.first > 0 && cell.ShowsSameAs(xsheet.Cell(level, exposure.first - 1)))
        --exposure.first;
    while (exposure.end < xsheet.FrameCount() && cell.ShowsSameAs(xsheet.Cell(level, exposure.end)))
        ++exposure.end;
    return exposure;
}

FrameOrder Repeated(CFrameSpan part, int count) {
    FrameOrder order(Bounded(count));
    for (std::size_t place = 0; place < order.size(); ++place)
        order[place] = part.first + static_cast<int>(place) % part.Length();
    return order;
}

FrameOrder HeldOn(CFrameSpan part, int count) {
    FrameOrder order(Bounded(count));
    for (std::size_t place = 0; place < order.size(); ++place)
        order[place] = std::min(part.first + static_cast<int>(place), part.end - 1);
    return order;
}

FrameOrder OnFrames(std::span<const CFrameSpan> exposures, int step) {
    FrameOrder order;
    for (const CFrameSpan& exposure : exposures)
        for (const int frame : HeldOn(exposure, step))
            order.push_back(frame);
    order.resize(Bounded(std::ssize(order)));
    return order;
}

FrameOrder ThereAndBack(std::span<const CFrameSpan> exposures) {
    FrameOrder order = FramesOf({exposures.front().first, exposures.back().end});
    if (exposures.size() < 3)
        return order;
    for (int frame = exposures.back().first - 1; frame >= exposures.front().end; --frame)
        order.push_back(frame);
    order.resize(Bounded(std::ssize(order)));
    return order;
}

FrameOrder Rolled(CFrameSpan part, int by) {
    FrameOrder order = FramesOf(part);
    const int down = (by % part.Length() + part.Length()) % part.Length();
    std::rotate(order.begin(), order.end() - down, order.end());
    return order;
}

FrameOrder Stretched(CFrameSpan part, int count) {
    FrameOrder order(Bounded(count));
    const std::size_t length = static_cast<std::size_t>(part.Length());
    for (std::size_t place = 0; place < order.size(); ++place)
        order[place] = part.first + static_cast<int>(place * length / order.size());
    return order;
}

FrameOrder Replacing(int frameCount, CFrameSpan part, const FrameOrder& made, Following following) {
    const int length = static_cast<int>(std::ssize(made));
    return Composed(frameCount, part.first, made, [&](int frame) {
        if (following == Following::Push)
            return std::min(frame - length + part.Length(), frameCount - 1);
        return frame < part.end ? noFrame : frame;
    });
}

FrameOrder Shifting(int frameCount, CFrameSpan part, int by, Following following) {
    const int up = std::clamp(-by, 0, part.first);
    const int down = std::clamp(by, 0, frameCount);
    FrameOrder put(static_cast<std::size_t>(down), noFrame);
    for (const int frame : FramesOf(part))
        put.push_back(frame);
    return Composed(frameCount, part.first - up, put, [&](int frame) {
        if (following == Following::Push)
            return std::min(frame - down + up, frameCount - 1);
        return frame < part.end ? noFrame : frame;
    });
}

FrameOrder Sliding(int frameCount, CFrameSpan exposure, int length, Following following) {
    FrameOrder made = HeldOn(exposure, length);
    if (following == Following::Eat && exposure.end < frameCount)
        while (std::ssize(made) < exposure.Length())
            made.push_back(exposure.end);
    return Replacing(frameCount, exposure, made, following);
}

} // namespace velmor
