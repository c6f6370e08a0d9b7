#include "views/dialogs/CellDataDialog.h"

#include "views/dialogs/RunDialog.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberEdit.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr double scaleStep = 0.05;

CNumberEdit* NewEdit(const QString& name) {
    return new CNumberEdit(name, NumberKind::Decimal);
}

CNumberEdit* NewScaleEdit(const QString& name) {
    CNumberEdit* edit = NewEdit(name);
    edit->SetStep(scaleStep);
    return edit;
}

QCheckBox* NewPreserve(const QString& name, const QString& text, const QString& what) {
    auto* box = new QCheckBox(text);
    box->setObjectName(name);
    box->setToolTip(what + " is the same in both directions");
    return box;
}

} // namespace

CCellDataDialog::CCellDataDialog(QWidget* parent, const CCellDataRequest& request)
    : CDialog(parent, "Edit XSheet Cel Data"),
      m_accept(request.accept),
      m_posX(NewEdit("posX")),
      m_posY(NewEdit("posY")),
      m_scaleX(NewScaleEdit("scaleX")),
      m_scaleY(NewScaleEdit("scaleY")),
      m_preserveScale(NewPreserve("preserveScale", "Preserve &Aspect", "The scale")),
      m_blurX(NewEdit("blurX")),
      m_blurY(NewEdit("blurY")),
      m_preserveBlur(NewPreserve("preserveBlur", "Pr&eserve Aspect", "The blur")),
      m_transparency(NewEdit("transparency")) {
    Body().addWidget(IdentityPanel(request.cell));
    AddFields();
    Body().addStretch();
    Show(request.initial);
    m_posX->BeFirst();
    if (request.show)
        for (const QLineEdit* edit : findChildren<QLineEdit*>()) // preserving an aspect changes the second
            connect(edit, &QLineEdit::textChanged, this, [this, show = request.show] { show(Values()); });
}

void CCellDataDialog::AddFields() {
    auto* grid = new QGridLayout;
    Body().addLayout(grid);
    AddLabeled(*grid, 0, 0, "Position &X :", *m_posX);
    AddLabeled(*grid, 0, 2, "Position &Y :", *m_posY);
    AddLabeled(*grid, 1, 0, "&Scale X :", *m_scaleX);
    AddLabeled(*grid, 1, 2, "S&cale Y :", *m_scaleY);
    grid->addWidget(m_preserveScale, 1, 4);
    m_rotation.AddTo(*grid, 2);
    AddLabeled(*grid, 3, 0, "&Blur X :", *m_blurX);
    AddLabeled(*grid, 3, 2, "B&lur Y :", *m_blurY);
    grid->addWidget(m_preserveBlur, 3, 4);
    AddLabeled(*grid, 4, 0, "&Transparency :", *m_transparency);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(10);
}

void CCellDataDialog::Show(const CCellDataForm& form) {
    m_posX->SetValue(form.posX);
    m_posY->SetValue(form.posY);
    m_scaleX->SetValue(form.scaleX);
    m_scaleY->SetValue(form.scaleY);
    m_rotation.Show(form.rotation);
    m_blurX->SetValue(form.blurX);
    m_blurY->SetValue(form.blurY);
    m_transparency->SetValue(form.transparency);
    m_preserveScale->setChecked(form.preserveScale);
    m_preserveBlur->setChecked(form.preserveBlur);
    KeepAspect(*m_preserveScale, *m_scaleX, *m_scaleY);
    KeepAspect(*m_preserveBlur, *m_blurX, *m_blurY);
}

CCellDataForm CCellDataDialog::Values() const {
    return {m_posX->ValueOrNan(),        m_posY->ValueOrNan(),         m_scaleX->ValueOrNan(),
            m_scaleY->ValueOrNan(),      m_preserveScale->isChecked(), m_rotation.Values(),
            m_blurX->ValueOrNan(),       m_blurY->ValueOrNan(),        m_preserveBlur->isChecked(),
            m_transparency->ValueOrNan()};
}

bool CCellDataDialog::Accepts() {
    if (IsAccepted(m_accept, Values()))
        return true;
    RefuseUnreadable({m_posX, m_posY, m_scaleX, m_scaleY, &m_rotation.Turns(), &m_rotation.Degrees(), m_blurX,
                      m_blurY, m_transparency});
    return false;
}

} // namespace velmor
