#pragma once

#include "image/CelImg.h"
#include "image/Color.h"
#include "image/Geometry.h"
#include "platform/Status.h"

#include <span>

namespace velmor {

/// A picture made elsewhere, handed out row by row from the bottom row up.
class CRowSource {
public:
    virtual ~CRowSource() = default;

    virtual CSize Size() const = 0;
    /// Fills `row` (one colour a pixel) with the next row. False when the data ends before the row does.
    [[nodiscard]] virtual bool ReadRow(std::span<CColor> row) = 0;
};

enum class ImportKind { Picture, Cel };

/// Empties `image` and makes it the whole of `source`: a picture with the source's alpha, or a cel whose lines are
/// chosen by CLineThreshold. `message` is that of a source that ends too early. On failure the image is empty.
CStatus ImportRows(CCelImg& image, CRowSource& source, ImportKind kind, int threshold, const Path& path,
                   const std::string& message);

} // namespace velmor
