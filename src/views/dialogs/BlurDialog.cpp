#include "views/dialogs/BlurDialog.h"

#include "views/dialogs/RunDialog.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int leastBlur = 1;
constexpr int mostBlur = 50;

CNumberSlider* NewSlider(const QString& name, double value) {
    auto* slider = new CNumberSlider(name, leastBlur, mostBlur, NumberKind::Decimal);
    slider->Edit().SetValue(value);
    QSizePolicy policy = slider->Slider().sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    slider->Slider().setSizePolicy(policy);
    return slider;
}

QCheckBox* NewPreserve(bool checked) {
    auto* box = new QCheckBox("&Preserve\nAspect");
    box->setObjectName("preserve");
    box->setToolTip("The blur is the same in both directions");
    box->setChecked(checked);
    return box;
}

} // namespace

CBlurDialog::CBlurDialog(QWidget* parent, const CBlurRequest& request)
    : CDialog(parent, "Edit XSheet Blur Data"),
      m_accept(request.accept),
      m_blurX(NewSlider("blurX", request.initial.blurX)),
      m_blurY(NewSlider("blurY", request.initial.blurY)),
      m_preserve(NewPreserve(request.initial.preserve)) {
    Body().addWidget(IdentityPanel(request.cell));
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "Blur &X :", *m_blurX);
    AddLabeled(*grid, 1, 0, "Blur &Y :", *m_blurY);
    grid->addWidget(m_preserve, 0, 2, 2, 1);
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(12);
    Body().addLayout(grid);
    Body().addStretch();
    KeepAspect(*m_preserve, m_blurX->Edit(), m_blurY->Edit());
    QSlider& sliderY = m_blurY->Slider();
    sliderY.setHidden(m_preserve->isChecked());
    connect(m_preserve, &QCheckBox::toggled, &sliderY, &QWidget::setHidden);
    m_blurX->Edit().BeFirst();
    if (request.show)
        for (const CNumberSlider* blur : {m_blurX, m_blurY}) // preserving the aspect changes the second
            connect(&blur->Edit(), &QLineEdit::textChanged, this, [this, show = request.show] { show(Values()); });
}

CBlurForm CBlurDialog::Values() const {
    return {m_blurX->Edit().ValueOrNan(), m_blurY->Edit().ValueOrNan(), m_preserve->isChecked()};
}

bool CBlurDialog::Accepts() {
    if (IsAccepted(m_accept, Values()))
        return true;
    RefuseUnreadable({&m_blurX->Edit(), &m_blurY->Edit()});
    return false;
}

} // namespace velmor
