#include "views/prompter/ChooseFolder.h"

#include "scene/ScenePaths.h"
#include "views/Text.h"
#include "views/widgets/WaitCursor.h"

#include <QDir>
#include <QFileDialog>

namespace velmor {

std::optional<std::string> CDChooseFolder::Ask(const QString& folder) const {
    QFileDialog dialog(m_parent, "Choose Folder", folder.isEmpty() ? QDir::currentPath() : folder);
    dialog.setOption(QFileDialog::DontUseNativeDialog, QGuiApplication::platformName() == "offscreen");
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setLabelText(QFileDialog::Accept, "Set");
    const CWaitPause pause;
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return WithSeparator(FromQt(QDir::toNativeSeparators(dialog.selectedFiles().first())));
}

} // namespace velmor
