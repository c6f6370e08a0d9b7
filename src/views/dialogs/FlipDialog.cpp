#include "views/dialogs/FlipDialog.h"

#include "views/widgets/RadioGroup.h"

#include <QVBoxLayout>

namespace velmor {

CFlipDialog::CFlipDialog(QWidget* parent, const CFlipRequest&)
    : CDialog(parent, "Flip Cel(s) / Picture(s)"),
      m_direction(new CRadioGroup({"Flip &Horizontal", "Flip &Vertical"}, 0)) {
    m_direction->setObjectName("direction");
    Body().addWidget(m_direction);
    m_direction->BeFirst();
}

FlipDirection CFlipDialog::Values() const {
    return m_direction->Chosen() == 0 ? FlipDirection::Horizontal : FlipDirection::Vertical;
}

} // namespace velmor
