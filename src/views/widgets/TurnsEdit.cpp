#include "views/widgets/TurnsEdit.h"

#include "views/widgets/FormParts.h"
#include "views/widgets/NumberEdit.h"

#include <QGridLayout>
#include <QLabel>
#include <limits>

namespace velmor {

CTurnsEdit::CTurnsEdit()
    : m_turns(new CNumberEdit("turns", NumberKind::Whole)),
      m_degrees(new CNumberEdit("degrees", NumberKind::Decimal)) {}

void CTurnsEdit::AddTo(QGridLayout& grid, int row) {
    AddLabeled(grid, row, 0, "&Rotation :", *m_turns);
    m_turns->setAccessibleName("Rotation, whole turns");
    m_degrees->setAccessibleName("Rotation, degrees");
    grid.addWidget(new QLabel("turns,"), row, 2);
    grid.addWidget(m_degrees, row, 3);
    grid.addWidget(new QLabel("degrees"), row, 4);
}

void CTurnsEdit::Show(const CTurns& rotation) {
    m_turns->SetValue(rotation.turns);
    m_degrees->SetValue(rotation.degrees);
}

CTurns CTurnsEdit::Values() const {
    const std::optional<int> turns = m_turns->Whole();
    return turns ? CTurns{*turns, m_degrees->ValueOrNan()} : CTurns{0, std::numeric_limits<double>::quiet_NaN()};
}

} // namespace velmor
