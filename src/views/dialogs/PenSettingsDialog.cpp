#include "views/dialogs/PenSettingsDialog.h"

#include "views/dialogs/RunDialog.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberEdit.h"
#include "views/widgets/PenTest.h"
#include "views/widgets/PressurePlot.h"
#include "views/widgets/RadioGroup.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace velmor {

namespace {

constexpr double testPen = 12;     ///< width of the stroke on the test sheet where pressure leaves it as it is
constexpr double mostTestPen = 60; ///< what is wider fills the sheet

CNumberEdit* NewPercentage(const QString& name, const QString& what, int value) {
    auto* edit = new CNumberEdit(name, NumberKind::Whole);
    edit->setAccessibleName(what);
    edit->setToolTip(what + ", in percent of the width that is chosen on the brush bar");
    edit->SetValue(value);
    return edit;
}

} // namespace

CPenSettingsDialog::CPenSettingsDialog(QWidget* parent, const CPenSettingsRequest& request)
    : CDialog(parent, "Pen Settings"),
      m_accept(request.accept),
      m_pens(NewRow("pens", "&Pens", request.initial.pens)),
      m_brushes(NewRow("brushes", "&Brushes", request.initial.brushes)),
      m_curve(new CPressurePlot(request.initial.curve)),
      m_test(new CPenTest([this](double pressure) { return TestWidth(pressure); })),
      m_stabilizer(new CRadioGroup({"&None", "Pulled &string", "&Weighted"},
                                   static_cast<int>(request.initial.stabilizer), Qt::Horizontal)),
      m_length(new CNumberEdit("length", NumberKind::Whole)) {
    m_length->SetValue(request.initial.stabilizerLength);
    auto* left = new QVBoxLayout;
    left->addWidget(MakePressure());
    left->addWidget(MakeStabilizer());
    left->addWidget(GroupOf("Test", m_test));
    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addWidget(MakeCurve());
    Body().addLayout(columns);
    m_test->pressed = [this](double pressure) { m_curve->ShowPressure(pressure); };
    m_stabilizer->changed = [this](int) { EnableFields(); };
    for (const CRangeRow& row : {m_pens, m_brushes})
        connect(row.isOn, &QCheckBox::toggled, this, [this] { EnableFields(); });
    EnableFields();
    m_pens.isOn->setFocus();
}

CPenSettingsDialog::CRangeRow CPenSettingsDialog::NewRow(const QString& name, const QString& text,
                                                         const CPressureRange& range) {
    auto* isOn = new QCheckBox(text);
    isOn->setObjectName(name);
    isOn->setToolTip("The pressure of the pen scales the width");
    isOn->setChecked(range.isOn);
    QString plain = text;
    plain.remove('&');
    return {isOn, NewPercentage(name + "Least", plain + ", least size", range.least),
            NewPercentage(name + "Largest", plain + ", largest size", range.largest)};
}

CPressureRange CPenSettingsDialog::RangeOf(const CRangeRow& row) {
    return {row.isOn->isChecked(), row.least->Whole().value_or(0), row.largest->Whole().value_or(0)};
}

QWidget* CPenSettingsDialog::MakePressure() {
    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel("Least %"), 0, 1);
    grid->addWidget(new QLabel("Largest %"), 0, 2);
    int line = 1;
    for (const CRangeRow& row : {m_pens, m_brushes}) {
        grid->addWidget(row.isOn, line, 0);
        grid->addWidget(row.least, line, 1);
        grid->addWidget(row.largest, line, 2);
        ++line;
    }
    grid->setColumnStretch(3, 1);
    return GroupOf("Pressure scales", grid);
}

QWidget* CPenSettingsDialog::MakeStabilizer() {
    m_stabilizer->setToolTip(
        "A pulled string follows the pen only where it is taut; weighted strokes are the mean of "
        "the way behind the pen");
    m_length->setToolTip("Length of the string, or of the way behind the pen, in pixels of the screen");
    auto* row = new QHBoxLayout;
    row->addWidget(LabelFor("&Length :", *m_length));
    row->addWidget(m_length);
    row->addStretch();
    auto* layout = new QVBoxLayout;
    layout->addWidget(m_stabilizer);
    layout->addLayout(row);
    return GroupOf("Stabilizer", layout);
}

QWidget* CPenSettingsDialog::MakeCurve() {
    auto* straight = new QPushButton("S&traight");
    straight->setObjectName("straight");
    straight->setToolTip("Every pressure counts for itself");
    straight->setAutoDefault(false);
    connect(straight, &QPushButton::clicked, this, [this] { m_curve->SetCurve({}); });
    m_curve->setObjectName("curve");
    auto* layout = new QVBoxLayout;
    layout->addWidget(m_curve, 1);
    layout->addWidget(straight, 0, Qt::AlignRight);
    return GroupOf("Pressure curve", layout);
}

void CPenSettingsDialog::EnableFields() {
    for (const CRangeRow& row : {m_pens, m_brushes})
        for (CNumberEdit* edit : {row.least, row.largest})
            edit->setEnabled(row.isOn->isChecked());
    m_length->setEnabled(m_stabilizer->Chosen() != static_cast<int>(StabilizerKind::None));
}

double CPenSettingsDialog::TestWidth(double pressure) const {
    const CPenSettings values = Values();
    const CPressureRange& range = values.pens.isOn || !values.brushes.isOn ? values.pens : values.brushes;
    const double width = range.isOn ? values.Width(range, testPen, pressure) : testPen;
    return std::clamp(width, 1.0, mostTestPen);
}

CPenSettings CPenSettingsDialog::Values() const {
    CPenSettings values;
    values.pens = RangeOf(m_pens);
    values.brushes = RangeOf(m_brushes);
    values.curve = m_curve->Curve();
    values.stabilizer = static_cast<StabilizerKind>(m_stabilizer->Chosen());
    values.stabilizerLength = m_length->Whole().value_or(0);
    return values;
}

bool CPenSettingsDialog::Accepts() {
    if (IsAccepted(m_accept, Values()))
        return true;
    RefuseUnreadable({m_pens.least, m_pens.largest, m_brushes.least, m_brushes.largest, m_length});
    return false;
}

} // namespace velmor
