#pragma once

#include "scene/DropType.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CNumberEdit;
class CRadioGroup;

/// The small window at the point where cels were dropped: on how many frames each, and whether they are inserted.
/// Every choice goes to `choices`, which outlives the dialog, as it is made.
class CDropTypeDialog final : public CDialog {
public:
    CDropTypeDialog(QWidget* parent, CDropType& choices);

    /// Moves the dialog to a point of the screen, as far as it then lies on it.
    void PlaceAt(QPoint screenPoint);

protected:
    /// Not while the field shows another step than the one in force.
    bool Accepts() override;
    void paintEvent(QPaintEvent* event) override;

private:
    void AddTypes();
    void AddInsert();
    void ShowStep();
    [[nodiscard]] bool TakeStep();

    CDropType& m_choices;
    CNumberEdit* m_step;
};

} // namespace velmor
