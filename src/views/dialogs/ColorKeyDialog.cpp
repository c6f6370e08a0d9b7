#include "views/dialogs/ColorKeyDialog.h"

#include "views/dialogs/RunDialog.h"
#include "views/widgets/ColorSwatch.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"
#include "views/widgets/RadioGroup.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int mostTolerance = 255;

QCheckBox* NewBox(const QString& name, const QString& text) {
    auto* box = new QCheckBox(text);
    box->setObjectName(name);
    return box;
}

// Checking one unchecks the other; both may be off.
void Exclude(QCheckBox& one, QCheckBox& other) {
    QObject::connect(&one, &QCheckBox::toggled, &other, [&other](bool on) {
        if (on)
            other.setChecked(false);
    });
}

} // namespace

CColorKeyDialog::CColorKeyDialog(QWidget* parent, const CColorKeyRequest& request)
    : CDialog(parent, "Color Keyer Settings"),
      m_accept(request.accept),
      m_tolerance(new CNumberSlider("tolerance", 0, mostTolerance, NumberKind::Whole)),
      m_color(new CColorSwatch("Key Color", request.initial.color)),
      m_process(new CRadioGroup({"&Add", "&Subract", "&Replace"}, request.initial.process)),
      m_black(NewBox("black", "&Black")),
      m_white(NewBox("white", "&White")) {
    m_color->setObjectName("color");
    m_process->setObjectName("process");
    m_tolerance->Edit().SetValue(request.initial.tolerance);
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "&Tolerance", *m_tolerance);
    AddLabeled(*grid, 1, 0, "&Key Color", *m_color);
    Body().addLayout(grid);
    auto* choices = new QHBoxLayout;
    auto* under = new QVBoxLayout;
    under->addWidget(m_black);
    under->addWidget(m_white);
    under->addStretch();
    choices->addWidget(GroupOf("Transparency", m_process), 1);
    choices->addWidget(GroupOf("Under the key", under), 1);
    Body().addLayout(choices);
    Exclude(*m_black, *m_white);
    Exclude(*m_white, *m_black);
    m_black->setChecked(request.initial.underKey == 1);
    m_white->setChecked(request.initial.underKey == 2);
    m_tolerance->Edit().BeFirst();
}

CColorKeyValues CColorKeyDialog::Values() const {
    const int underKey = m_black->isChecked() ? 1 : m_white->isChecked() ? 2 : 0;
    return {m_color->Color(), m_tolerance->Edit().Whole().value_or(-1), m_process->Chosen(), underKey};
}

bool CColorKeyDialog::Accepts() {
    if (IsAccepted(m_accept, Values()))
        return true;
    static_cast<void>(m_tolerance->Edit().Require(0, mostTolerance)); // leads to the number that was refused
    return false;
}

} // namespace velmor
