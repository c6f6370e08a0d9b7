#pragma once

#include "scene/SceneContext.h"
#include "xsheet/SheetCell.h"
#include "xsheet/XSheetCell.h"

#include <functional>
#include <optional>

namespace velmor {

/// Shows a cell of the sheet otherwise while a dialog is open, without a step in the history. When it ends, at the
/// latest with its life, the cell is what it was.
class CCellTrial {
public:
    CCellTrial(CSceneContext& context, CSheetCell cell) : m_context(context), m_cell(cell) {}
    CCellTrial(const CCellTrial&) = delete;
    CCellTrial& operator=(const CCellTrial&) = delete;
    ~CCellTrial() { End(); }

    /// `change` is made to the cell as it was at the beginning.
    void Show(const std::function<void(CXSheetCell&)>& change);
    void End();

private:
    void Put(const CXSheetCell& cell);

    CSceneContext& m_context;
    CSheetCell m_cell;
    std::optional<CXSheetCell> m_before; ///< once it is shown otherwise
};

} // namespace velmor
