#include "views/dialogs/SwapLevelsDialog.h"

#include "views/widgets/LevelListWidget.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

namespace velmor {

CSwapLevelsDialog::CSwapLevelsDialog(QWidget* parent, const CSwapLevelsRequest& request)
    : CDialog(parent, "Swap Levels"), m_levels(new CLevelListWidget(request.levelNames)) {
    setObjectName("SwapLevels");
    auto* prompt = new QLabel("Select two \nlevels to swap \ntheir places");
    prompt->setBuddy(m_levels);
    m_levels->setSelectionMode(QListWidget::MultiSelection);
    Body().addWidget(prompt);
    Body().addWidget(m_levels, 1);
    connect(m_levels, &QListWidget::itemSelectionChanged, this, &CSwapLevelsDialog::TakeSelection);
    m_levels->setFocus();
    TakeSelection();
    resize(300, 360);
}

void CSwapLevelsDialog::TakeSelection() {
    std::erase_if(m_chosen, [this](int level) { return !m_levels->item(level)->isSelected(); });
    for (int level = 0; level < m_levels->count(); ++level)
        if (m_levels->item(level)->isSelected() &&
            std::find(m_chosen.begin(), m_chosen.end(), level) == m_chosen.end())
            m_chosen.push_back(level);
    const QSignalBlocker quiet(m_levels);
    while (m_chosen.size() > 2) {
        m_levels->item(m_chosen.front())->setSelected(false);
        m_chosen.erase(m_chosen.begin());
    }
    OkButton().setEnabled(m_chosen.size() == 2);
}

std::pair<int, int> CSwapLevelsDialog::Values() const {
    return std::minmax(m_chosen.front(), m_chosen.back());
}

} // namespace velmor
