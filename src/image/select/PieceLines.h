#pragma once

#include "image/select/PieceTransform.h"

namespace velmor {

/// Makes lines of `placed` (what sampling has found of a piece's lines) hang together where those of the piece do:
/// every line pixel is there, and those that touch, corners included, are joined.
void JoinLines(const CPiece& piece, const CPieceMap& map, CPiece& placed);

} // namespace velmor
