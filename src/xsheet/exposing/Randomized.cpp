#include "xsheet/exposing/FrameOrder.h"

#include <random>

namespace velmor {

namespace {

// One of those that show something else than the cell before; nothing where all show the same.
const CFrameSpan* Pick(const CXSheet& xsheet, int level, const std::vector<CFrameSpan>& drawings, int before,
                       std::mt19937& random) {
    std::vector<const CFrameSpan*> others;
    for (const CFrameSpan& drawing : drawings)
        if (before == noFrame || !xsheet.Cell(level, drawing.first).ShowsSameAs(xsheet.Cell(level, before)))
            others.push_back(&drawing);
    return others.empty() ? nullptr : others[random() % others.size()];
}

} // namespace

FrameOrder Randomized(const CXSheet& xsheet, int level, CFrameSpan part, unsigned seed) {
    const std::vector<CFrameSpan> exposures = ExposuresOf(xsheet, level, part);
    std::vector<CFrameSpan> drawings;
    for (const CFrameSpan& exposure : exposures)
        if (xsheet.Cell(level, exposure.first).IsUsed())
            drawings.push_back(exposure);
    std::mt19937 random(seed);
    int before = part.first > 0 ? part.first - 1 : noFrame;
    FrameOrder order;
    for (const CFrameSpan& place : exposures) {
        const CFrameSpan* picked = &place;
        if (xsheet.Cell(level, place.first).IsUsed()) {
            if (const CFrameSpan* other = Pick(xsheet, level, drawings, before, random))
                picked = other;
            before = picked->first;
        }
        for (const int frame : HeldOn(*picked, place.Length()))
            order.push_back(frame);
    }
    return order;
}

} // namespace velmor
