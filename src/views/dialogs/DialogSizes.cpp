#include "views/dialogs/DialogSizes.h"

#include "views/Text.h"

#include <QChildEvent>
#include <QDialog>
#include <QScreen>

namespace velmor {

namespace {

constexpr const char* section = "Window";
constexpr const char* sizeWhenShown = "sizeWhenShown";

std::string KeyOf(const QDialog& dialog, const char* what) {
    return FromQt(dialog.objectName()) + " " + what;
}

} // namespace

CDialogSizes::CDialogSizes(QWidget& window, CProfile* profile)
    : m_profile(profile != nullptr ? *profile : m_ownProfile) {
    window.installEventFilter(this);
}

bool CDialogSizes::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ChildPolished) {
        if (auto* dialog = qobject_cast<QDialog*>(static_cast<QChildEvent*>(event)->child()))
            dialog->installEventFilter(this);
    } else if ((event->type() == QEvent::Show || event->type() == QEvent::Hide) && !event->spontaneous()) {
        auto* dialog = qobject_cast<QDialog*>(watched);
        if (dialog != nullptr && !dialog->objectName().isEmpty())
            event->type() == QEvent::Show ? Restore(*dialog) : Keep(*dialog);
    }
    return false;
}

void CDialogSizes::Restore(QDialog& dialog) const {
    const QSize size(m_profile.GetInt(section, KeyOf(dialog, "Width"), 0),
                     m_profile.GetInt(section, KeyOf(dialog, "Height"), 0));
    if (!size.isEmpty())
        dialog.resize(size.boundedTo(dialog.screen()->availableSize()));
    dialog.setProperty(sizeWhenShown, dialog.size());
}

void CDialogSizes::Keep(const QDialog& dialog) {
    // A size that the user did not choose is not kept: another font or language may want another one.
    if (dialog.size() == dialog.property(sizeWhenShown).toSize() || dialog.isMaximized())
        return;
    static_cast<void>(m_profile.WriteInt(section, KeyOf(dialog, "Width"), dialog.width()));
    static_cast<void>(m_profile.WriteInt(section, KeyOf(dialog, "Height"), dialog.height()));
}

} // namespace velmor
