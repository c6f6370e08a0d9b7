#pragma once

#include "image/paper/Skins.h"
#include "platform/files/Files.h"

#include <vector>

namespace velmor {

class CInkCache;

/// A drawing to be laid on its sheet: a file in one of its states.
struct CSkinOrder {
    Path file;
    CFileIdentity identity;
    bool withPaint = false;
    CPlacement placement;
    ColorRef tint = 0;
    int percent = 100;
    bool over = false;

    bool operator==(const CSkinOrder&) const = default;
};

/// Skins that are laid once, and again when something about them has changed.
class CSkinStack {
public:
    /// The lowest first, on sheets of a size. False when all is as it was. What cannot be read is left out.
    bool Lay(std::vector<CSkinOrder> orders, CSize size, CInkCache& inks);
    const CSkinSheet& Sheet() const { return m_sheet; }

private:
    std::vector<CSkinOrder> m_orders;
    CSize m_size;
    CSkinSheet m_sheet;
};

} // namespace velmor
