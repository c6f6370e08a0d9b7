#include "views/dialogs/GridSettingsDialog.h"

#include "views/dialogs/RunDialog.h"
#include "views/widgets/ColorSwatch.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/GridSample.h"
#include "views/widgets/NumberEdit.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

CColorSwatch* NewSwatch(const QString& objectName, const QString& name, ColorRef color) {
    auto* swatch = new CColorSwatch(name, {BlueOf(color), GreenOf(color), RedOf(color)});
    swatch->setObjectName(objectName);
    return swatch;
}

ColorRef ColorOf(const CColorSwatch& swatch) {
    const CColor& color = swatch.Color();
    return MakeColorRef(color.red, color.green, color.blue);
}

} // namespace

CGridSettingsDialog::CGridSettingsDialog(QWidget* parent, const CGridSettingsRequest& request)
    : CDialog(parent, "Cel View Settings"),
      m_accept(request.accept),
      m_size(new CNumberEdit("size", NumberKind::Whole)),
      m_color1(NewSwatch("color1", "Grid Color 1", request.initial.color1)),
      m_color2(NewSwatch("color2", "Grid Color 2", request.initial.color2)),
      m_sample(new CGridSample) {
    m_size->SetValue(request.initial.size);
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "Set Grid &Size :", *m_size);
    AddLabeled(*grid, 1, 0, "Grid Color  &1:", *m_color1);
    AddLabeled(*grid, 2, 0, "Grid Color  &2:", *m_color2);
    grid->addWidget(m_color1->NewChooserButton("Set >>"), 1, 2);
    grid->addWidget(m_color2->NewChooserButton("Set >>"), 2, 2);
    grid->addWidget(m_sample, 3, 0, 1, 3, Qt::AlignCenter);
    grid->setVerticalSpacing(10);
    Body().addWidget(GroupOf("Background setup", grid));
    m_size->BeFirst();
    FollowChanges();
    ShowSample();
}

void CGridSettingsDialog::FollowChanges() {
    connect(m_size, &QLineEdit::textChanged, this, [this] { ShowSample(); });
    m_color1->changed = [this] { ShowSample(); };
    m_color2->changed = [this] { ShowSample(); };
}

// While no size can be read the sample stays as it is.
void CGridSettingsDialog::ShowSample() {
    if (const CGridSettings values = Values(); values.size >= 1)
        m_sample->Show(values);
}

CGridSettings CGridSettingsDialog::Values() const {
    return {ColorOf(*m_color1), ColorOf(*m_color2), m_size->Whole().value_or(0)};
}

bool CGridSettingsDialog::Accepts() {
    if (IsAccepted(m_accept, Values()))
        return true;
    RefuseUnreadable({m_size});
    return false;
}

} // namespace velmor
