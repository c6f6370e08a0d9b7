#include "views/widgets/RadioGroup.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QRadioButton>

namespace velmor {

CRadioGroup::CRadioGroup(const QStringList& labels, int chosen, Qt::Orientation orientation)
    : m_buttons(new QButtonGroup(this)) {
    auto* row =
        new QBoxLayout(orientation == Qt::Vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, this);
    row->setContentsMargins(0, 0, 0, 0);
    for (int index = 0; index < labels.size(); ++index) {
        auto* button = new QRadioButton(labels[index]);
        m_buttons->addButton(button, index);
        row->addWidget(button);
    }
    row->addStretch();
    m_buttons->button(chosen >= 0 && chosen < labels.size() ? chosen : 0)->setChecked(true);
    connect(m_buttons, &QButtonGroup::idToggled, this, [this](int index, bool on) {
        if (on && changed)
            changed(index);
    });
}

int CRadioGroup::Chosen() const {
    return m_buttons->checkedId();
}

void CRadioGroup::BeFirst() {
    m_buttons->checkedButton()->setFocus(Qt::TabFocusReason);
}

} // namespace velmor
