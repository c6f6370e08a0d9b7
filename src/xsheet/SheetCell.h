#pragma once

namespace velmor {

/// A place on the xsheet, 0-based.
struct CSheetCell {
    int level = 0;
    int frame = 0;

    bool operator==(const CSheetCell&) const = default;
};

} // namespace velmor
