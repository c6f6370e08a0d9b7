#pragma once

#include "image/Geometry.h"
#include "platform/Status.h"

#include <new>
#include <optional>

namespace velmor {

/// What a painting operation did: whether it could run, and the smallest rectangle that holds every pixel it may
/// have changed (buffer coordinates; empty when none).
struct CPaintResult {
    CStatus status;
    CRect changed;
    std::optional<CPoint> leak{}; ///< where a fill would have leaked out, for which it was refused
};

/// Runs an operation that takes all its memory before it changes the image, and fails where there is none.
template<class Operation>
CPaintResult PaintWithMemory(Operation operation) {
    try {
        return {CStatus(), operation()};
    } catch (const std::bad_alloc&) {
        return {CStatus::Failure("Unable to allocate memory for cel!"), CRect{}};
    }
}

} // namespace velmor
