#include "views/dialogs/SequenceExposure.h"

#include "views/Text.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberEdit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>

namespace velmor {

CSequenceExposure::CSequenceExposure(const std::vector<std::string>& levelNames)
    : QGroupBox("E&xpose on the xsheet"),
      m_level(new QComboBox),
      m_frame(new CNumberEdit("frame", NumberKind::Whole)),
      m_hold(new CNumberEdit("hold", NumberKind::Whole)),
      m_holdsGaps(new QCheckBox("Hold over &missing numbers")),
      m_result(new QLabel) {
    setObjectName("exposure");
    setAccessibleName("Expose on the xsheet");
    setCheckable(true);
    m_level->setObjectName("level");
    for (const std::string& level : levelNames)
        m_level->addItem(ToQt(level));
    m_level->addItem("(new level in front)");
    m_level->setMinimumContentsLength(18);
    m_holdsGaps->setObjectName("holdsGaps");
    m_holdsGaps->setToolTip("Where numbers are missing, the drawing before stays as long as they would have");
    m_result->setObjectName("result");
    m_result->setTextFormat(Qt::PlainText);
    m_result->setWordWrap(true);
    auto* grid = new QGridLayout(this);
    AddLabeled(*grid, 0, 0, "&Level :", *m_level);
    AddLabeled(*grid, 0, 2, "F&rom frame :", *m_frame);
    AddLabeled(*grid, 0, 4, "Frames &each :", *m_hold);
    grid->addWidget(m_holdsGaps, 0, 6);
    grid->addWidget(m_result, 1, 0, 1, 8);
    grid->setColumnStretch(7, 1);
    const auto tell = [this] {
        if (changed)
            changed();
    };
    connect(this, &QGroupBox::toggled, this, tell);
    connect(m_level, &QComboBox::currentIndexChanged, this, tell);
    connect(m_frame, &QLineEdit::textChanged, this, tell);
    connect(m_hold, &QLineEdit::textChanged, this, tell);
    connect(m_holdsGaps, &QCheckBox::toggled, this, tell);
}

void CSequenceExposure::Show(const CSequence& sequence) {
    setChecked(sequence.isExposed);
    m_level->setCurrentIndex(sequence.level.value_or(m_level->count() - 1));
    m_frame->SetValue(sequence.frame + 1);
    m_hold->SetValue(sequence.hold);
    m_holdsGaps->setChecked(sequence.holdsGaps);
}

void CSequenceExposure::Put(CSequence& sequence) const {
    sequence.isExposed = isChecked();
    sequence.level.reset();
    if (m_level->currentIndex() < m_level->count() - 1)
        sequence.level = m_level->currentIndex();
    sequence.frame = m_frame->Whole().value_or(0) - 1;
    sequence.hold = m_hold->Whole().value_or(0);
    sequence.holdsGaps = m_holdsGaps->isChecked();
}

void CSequenceExposure::ShowResult(const std::string& text) {
    m_result->setText(ToQt(text));
}

void CSequenceExposure::RefuseUnreadable() {
    velmor::RefuseUnreadable({m_frame, m_hold});
}

} // namespace velmor
