#include "views/dialogs/RotateDialog.h"

#include "views/widgets/NumberEdit.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace velmor {

CRotateDialog::CRotateDialog(QWidget* parent, const CRotationRequest&)
    : CDialog(parent, "Rotate Cel(s) / Picture(s)"),
      m_kinds(new QButtonGroup(this)),
      m_angle(new CNumberEdit("angle", NumberKind::Decimal)) {
    m_angle->setAccessibleName("Angle in degrees, counter-clockwise");
    m_angle->SetValue(0);
    m_angle->setEnabled(false);
    AddKinds();
    Body().addStretch();
    connect(m_kinds, &QButtonGroup::idToggled, this, [this] {
        const bool free = Kind() == RotationKind::Free;
        m_angle->setEnabled(free);
        // With the keyboard the choice goes on among the buttons.
        if (free && m_kinds->checkedButton()->underMouse())
            m_angle->BeFirst();
    });
}

void CRotateDialog::AddKinds() {
    const QStringList labels{"Rotate &90 CW", "Rotate 90 &CCW", "Rotate &180", "&Free Rotate : "};
    auto* freeRow = new QHBoxLayout;
    for (int kind = 0; kind < labels.size(); ++kind) {
        auto* button = new QRadioButton(labels[kind]);
        button->setObjectName("kind" + QString::number(kind));
        m_kinds->addButton(button, kind);
        if (static_cast<RotationKind>(kind) == RotationKind::Free)
            freeRow->addWidget(button);
        else
            Body().addWidget(button);
    }
    freeRow->addWidget(m_angle);
    freeRow->addWidget(new QLabel("degrees, counter-clockwise"));
    freeRow->addStretch();
    Body().addLayout(freeRow);
    m_kinds->button(0)->setChecked(true);
    m_kinds->button(0)->setFocus();
}

RotationKind CRotateDialog::Kind() const {
    return static_cast<RotationKind>(m_kinds->checkedId());
}

CRotationValues CRotateDialog::Values() const {
    return {Kind(), Kind() == RotationKind::Free ? m_angle->ValueOrNan() : 0};
}

bool CRotateDialog::Accepts() {
    return Kind() != RotationKind::Free || m_angle->RequireNumber();
}

} // namespace velmor
