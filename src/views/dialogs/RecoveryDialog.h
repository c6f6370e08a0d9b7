#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QDateTime;

namespace velmor {

/// "The scene Demo has 37 changes from 14:32 to 14:51 that were not saved."
QString UnsavedText(const CRecoveryRequest& request, const QDateTime& now);

/// "Recover Changes": asks what is to become of changes that were not saved. Discarding asks once more.
class CRecoveryDialog final : public CDialog {
public:
    CRecoveryDialog(QWidget* parent, const CRecoveryRequest& request);

    RecoveryAnswer Values() const { return m_answer; }

private:
    QWidget* NewQuestion();
    void Discard();

    const CRecoveryRequest& m_request;
    RecoveryAnswer m_answer = RecoveryAnswer::Recover;
};

} // namespace velmor
