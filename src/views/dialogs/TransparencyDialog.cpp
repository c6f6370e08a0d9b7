#include "views/dialogs/TransparencyDialog.h"

#include "views/dialogs/RunDialog.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int mostTransparency = 100;

} // namespace

CTransparencyDialog::CTransparencyDialog(QWidget* parent, const CTransparencyRequest& request)
    : CDialog(parent, "Edit XSheet Transparency Data"),
      m_accept(request.accept),
      m_transparency(new CNumberSlider("transparency", 0, mostTransparency, NumberKind::Decimal)) {
    Body().addWidget(IdentityPanel(request.cell));
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "&Transparency :", *m_transparency);
    Body().addLayout(grid);
    Body().addStretch();
    m_transparency->Edit().SetValue(request.initial);
    m_transparency->Edit().BeFirst();
    if (request.show)
        connect(&m_transparency->Edit(), &QLineEdit::textChanged, this,
                [this, show = request.show] { show(Values()); });
}

double CTransparencyDialog::Values() const {
    return m_transparency->Edit().ValueOrNan();
}

bool CTransparencyDialog::Accepts() {
    if (IsAccepted(m_accept, Values()))
        return true;
    RefuseUnreadable({&m_transparency->Edit()});
    return false;
}

} // namespace velmor
