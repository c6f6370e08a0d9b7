#pragma once

#include "image/select/Piece.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace velmor {

/// A piece as the clipboard holds it for other cels, its lines included. May throw std::bad_alloc.
std::vector<std::uint8_t> BytesOf(const CPiece& piece);
/// Nothing when the bytes are not those of a piece: any program may have put them there. May throw std::bad_alloc.
std::optional<CPiece> ReadPiece(std::span<const std::uint8_t> bytes);

/// A piece of a picture out of rows of red, green, blue and alpha, top row first, with its lower left corner at a
/// place. What is wholly transparent is no part of it. Empty when the size does not go with the bytes, or is not
/// one that an image may have.
CPiece PieceOfPixels(std::span<const std::uint8_t> rgba, CSize size, CPoint lowerLeft);
/// The other way: what the piece does not cover is transparent.
std::vector<std::uint8_t> PixelsOf(const CPiece& piece);

} // namespace velmor
