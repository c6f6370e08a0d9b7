#include "views/dialogs/CameraDataDialog.h"

#include "views/widgets/FormParts.h"
#include "views/widgets/NumberEdit.h"

#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

CNumberEdit* NewEdit(const QString& name) {
    return new CNumberEdit(name, NumberKind::Decimal);
}

} // namespace

CCameraDataDialog::CCameraDataDialog(QWidget* parent, const CCameraDataRequest& request)
    : CDialog(parent, "Edit Current Frame Camera Parameters"),
      m_posX(NewEdit("posX")),
      m_posY(NewEdit("posY")),
      m_zoom(NewEdit("zoom")) {
    AddFields(request.frame);
    Body().addStretch();
    Show(request.initial);
    m_posX->BeFirst();
}

void CCameraDataDialog::AddFields(int frame) {
    auto* grid = new QGridLayout;
    Body().addLayout(grid);
    AddShown(*grid, 0, 0, "Frame :", "frame", QString::number(frame));
    AddLabeled(*grid, 1, 0, "Position &X :", *m_posX);
    AddLabeled(*grid, 1, 2, "Position &Y :", *m_posY);
    AddLabeled(*grid, 2, 0, "&Zoom % :", *m_zoom);
    m_rotation.AddTo(*grid, 3);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(10);
    auto* reset = new QPushButton("R&eset");
    reset->setObjectName("reset");
    reset->setAutoDefault(false);
    reset->setToolTip("Where the camera stands without a move");
    grid->addWidget(reset, 4, 1);
    connect(reset, &QPushButton::clicked, this, [this] { Show({}); });
}

void CCameraDataDialog::Show(const CCameraForm& form) {
    m_posX->SetValue(form.posX);
    m_posY->SetValue(form.posY);
    m_zoom->SetValue(form.zoomPercent);
    m_rotation.Show(form.rotation);
}

CCameraForm CCameraDataDialog::Values() const {
    return {m_posX->ValueOrNan(), m_posY->ValueOrNan(), m_zoom->ValueOrNan(), m_rotation.Values()};
}

bool CCameraDataDialog::Accepts() {
    return m_posX->RequireNumber() && m_posY->RequireNumber() && m_zoom->RequireNumber() &&
           m_rotation.Turns().RequireNumber() && m_rotation.Degrees().RequireNumber();
}

} // namespace velmor
