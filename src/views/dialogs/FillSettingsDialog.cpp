#include "views/dialogs/FillSettingsDialog.h"

#include "image/paint/GapFill.h"
#include "views/widgets/NumberSlider.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QSlider>

namespace velmor {

namespace {

CNumberSlider* MakeSlider(const QString& name, const QString& accessibleName, int most, int value) {
    auto* slider = new CNumberSlider(name, 0, most, NumberKind::Whole, "pixels");
    slider->Edit().SetValue(value);
    slider->Edit().setAccessibleName(accessibleName);
    slider->Slider().setAccessibleName(accessibleName);
    return slider;
}

QCheckBox* MakeCheckBox(const char* name, const QString& text, bool checked, const QString& tip) {
    auto* box = new QCheckBox(text);
    box->setObjectName(name);
    box->setChecked(checked);
    box->setToolTip(tip);
    return box;
}

} // namespace

CFillSettingsDialog::CFillSettingsDialog(QWidget* parent, const CFillSettingsRequest& request)
    : CDialog(parent, "Fill Settings"),
      m_gap(MakeSlider("fillGap", "Gap size", mostFillGap, request.initial.gap)),
      m_refuseLeaks(MakeCheckBox("refuseLeaks", "&Refuse to fill what leaks to the border",
                                 request.initial.refuseLeaks,
                                 "The leak is marked; with Shift the fill paints all the same")),
      m_lines(new QComboBox),
      m_underLine(
          MakeSlider("underLine", "Paint under lines of other cels", mostUnderLine, request.initial.underLine)),
      m_overAreas(MakeCheckBox("overAreas", "&Dragging fills every area on the way", request.initial.overAreas,
                               "Of the solid fill. Without it only the place counts where the button is let go")) {
    m_lines->setObjectName("fillLines");
    m_lines->addItems({"of this cel", "of all cels of the frame"});
    m_lines->setCurrentIndex(static_cast<int>(request.initial.lines));
    QFormLayout& form = AddForm();
    form.addRow("Close &gaps up to:", m_gap);
    form.addRow("", m_refuseLeaks);
    form.addRow("Stop at &lines:", m_lines);
    form.addRow("Paint &under them:", m_underLine);
    form.addRow("", m_overAreas);
    AddHint("Gaps are measured between the ends of lines; with 0 none are closed. Paint goes under lines of other "
            "cels only, up to their middle.");
    Body().addStretch();
    connect(m_lines, &QComboBox::currentIndexChanged, this, [this] { EnableWhatCounts(); });
    connect(&m_gap->Edit(), &QLineEdit::textChanged, this, [this] { EnableWhatCounts(); });
    EnableWhatCounts();
    m_gap->Edit().BeFirst();
}

void CFillSettingsDialog::EnableWhatCounts() {
    m_refuseLeaks->setEnabled(m_gap->Edit().Whole().value_or(0) != 0);
    m_underLine->setEnabled(m_lines->currentIndex() == static_cast<int>(FillLines::VisibleCels));
}

CFillChoices CFillSettingsDialog::Values() const {
    return {m_gap->Edit().Whole().value_or(0), m_refuseLeaks->isChecked(), m_underLine->Edit().Whole().value_or(0),
            static_cast<FillLines>(m_lines->currentIndex()), m_overAreas->isChecked()};
}

bool CFillSettingsDialog::Accepts() {
    return m_gap->Edit().Require(0, mostFillGap) && m_underLine->Edit().Require(0, mostUnderLine);
}

} // namespace velmor
