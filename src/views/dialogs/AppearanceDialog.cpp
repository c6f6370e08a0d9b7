#include "views/dialogs/AppearanceDialog.h"

#include "views/widgets/RadioGroup.h"

#include <QVBoxLayout>

namespace velmor {

CAppearanceDialog::CAppearanceDialog(QWidget* parent, const CAppearanceRequest& request)
    : CDialog(parent, "Appearance"),
      m_request(request),
      m_choices(new CRadioGroup({"As the &system has it", "&Light", "&Dark"}, static_cast<int>(request.initial))) {
    m_choices->setObjectName("appearance");
    m_choices->changed = [this](int) { m_request.show(Values()); };
    Body().addWidget(m_choices);
    m_choices->BeFirst();
}

Appearance CAppearanceDialog::Values() const {
    return static_cast<Appearance>(m_choices->Chosen());
}

void CAppearanceDialog::reject() {
    m_request.show(m_request.initial);
    CDialog::reject();
}

} // namespace velmor
