#pragma once

#include "platform/files/Profile.h"

#include <QObject>

class QDialog;
class QWidget;

namespace velmor {

/// Gives a window's dialogs back the size at which the user left them. A dialog takes part when it has an object
/// name and can be resized; the sizes stand in section "Window" of the profile.
class CDialogSizes final : public QObject {
public:
    /// Without a profile the sizes last as long as the object. Window and profile outlive it.
    CDialogSizes(QWidget& window, CProfile* profile);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Restore(QDialog& dialog) const;
    void Keep(const QDialog& dialog);

    CProfile m_ownProfile;
    CProfile& m_profile;
};

} // namespace velmor
