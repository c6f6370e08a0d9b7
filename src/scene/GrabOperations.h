#pragma once

#include "scene/SceneContext.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace velmor {

class CImportOperations;

/// Images that a camera or a scanner hands over, as assets of the open scene.
class CGrabOperations {
public:
    CGrabOperations(CSceneContext context, CImportOperations& imports) : m_context(context), m_imports(imports) {}

    /// Whether assets of a kind can be taken; shows what is missing.
    bool CanGrab(SourceMode kind) const;
    /// A captured frame, in a bitmap file of any depth. Asks for a name; a cel's lines are the pixels darker than
    /// `threshold` (0 to 255). False when the user gave up or something failed, which has been shown.
    [[nodiscard]] bool GetDataFromDIB(const Path& bitmapFile, SourceMode kind, int threshold);
    /// A scanned page: a packed bitmap, which must have 1 bit a pixel for a cel and 24 for a picture.
    [[nodiscard]] bool GetDataFromDIB(std::span<const std::uint8_t> packedBitmap, SourceMode kind);

private:
    [[nodiscard]] bool Store(CCelImg& image, SourceMode kind, const char* failure);

    CSceneContext m_context;
    CImportOperations& m_imports;
};

} // namespace velmor
