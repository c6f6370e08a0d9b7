#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CRadioGroup;

/// "Flip Cel(s) / Picture(s)".
class CFlipDialog final : public CDialog {
public:
    explicit CFlipDialog(QWidget* parent, const CFlipRequest& request = {});

    FlipDirection Values() const;

private:
    CRadioGroup* m_direction;
};

} // namespace velmor
