#include "views/dialogs/ImportSettingsDialog.h"

#include "views/widgets/NumberSlider.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int mostThreshold = 255;

} // namespace

CImportSettingsDialog::CImportSettingsDialog(QWidget* parent, const CImportSettingsRequest& request)
    : CDialog(parent, "Import Settings"),
      m_threshold(new CNumberSlider("threshold", 0, mostThreshold, NumberKind::Whole)) {
    auto* label = new QLabel("&Gray level threshold for B/W conversion:");
    label->setBuddy(m_threshold);
    m_threshold->ShowEnds();
    m_threshold->Slider().setMinimumWidth(mostThreshold + 1);
    m_threshold->Edit().SetValue(request.threshold);
    m_threshold->Edit().setAccessibleName("Gray level threshold");
    m_threshold->Slider().setAccessibleName("Gray level threshold");
    Body().addWidget(label);
    Body().addWidget(m_threshold);
    AddHint("What is darker becomes a line, what is lighter becomes paper.");
    Body().addStretch();
    m_threshold->Edit().BeFirst();
}

int CImportSettingsDialog::Values() const {
    return m_threshold->Edit().Whole().value_or(-1);
}

bool CImportSettingsDialog::Accepts() {
    return m_threshold->Edit().Require(0, mostThreshold);
}

} // namespace velmor
