#pragma once

#include "xsheet/CellForms.h"

class QGridLayout;

namespace velmor {

class CNumberEdit;

/// The two fields of a rotation: whole turns and degrees.
class CTurnsEdit {
public:
    CTurnsEdit();
    /// Makes a row of the grid of them, with their label and units, from column 0 on. Until then they belong to
    /// nobody: to be called soon.
    void AddTo(QGridLayout& grid, int row);

    void Show(const CTurns& rotation);
    /// Turns that cannot be read make the degrees not a number, as unreadable degrees do: no rule takes them.
    CTurns Values() const;

    CNumberEdit& Turns() { return *m_turns; }
    CNumberEdit& Degrees() { return *m_degrees; }

private:
    CNumberEdit* m_turns;
    CNumberEdit* m_degrees;
};

} // namespace velmor
