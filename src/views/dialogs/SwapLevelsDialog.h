#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

#include <string>
#include <utility>
#include <vector>

namespace velmor {

class CLevelListWidget;

/// "Swap Levels": two of the levels. A third one that is selected takes the place of the first.
class CSwapLevelsDialog final : public CDialog {
public:
    CSwapLevelsDialog(QWidget* parent, const CSwapLevelsRequest& request);

    /// The upper one first, counted from 0. Only for a dialog that was confirmed.
    std::pair<int, int> Values() const;

protected:
    bool Accepts() override { return m_chosen.size() == 2; }

private:
    void TakeSelection();

    CLevelListWidget* m_levels;
    std::vector<int> m_chosen; ///< in the order of their selection
};

} // namespace velmor
