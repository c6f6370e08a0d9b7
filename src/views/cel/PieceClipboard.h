#pragma once

#include "image/Geometry.h"
#include "image/select/Piece.h"

#include <memory>
#include <optional>

class QMimeData;

namespace velmor {

/// A piece for the clipboard: for other cels as it is, lines included, for other programs as a picture with alpha.
std::unique_ptr<QMimeData> MimeOf(const CPiece& piece);
/// The piece that is there, or a picture from another program, its middle at a point of the image. Nothing when
/// there is neither: what other programs offer is not believed.
std::optional<CPiece> PieceOf(const QMimeData& data, CPoint middle);

// The same with the system's clipboard.
void PutOnClipboard(const CPiece& piece);
std::optional<CPiece> TakeFromClipboard(CPoint middle);
bool HasPieceOnClipboard();

} // namespace velmor
