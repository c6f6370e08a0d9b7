#include "app/window/OnlineManual.h"

#include "app/window/ManualWindow.h"
#include "scene/Prompter.h"
#include "views/Text.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace velmor {

namespace {

// What the shell of the desktop calls these reasons.
constexpr int opened = 33;
constexpr int fileNotFound = 2;
constexpr int noReader = 31;

constexpr int answerMilliseconds = 2000;

// The desktop's opener answers before it has looked for a reader, so it is asked beforehand. A desktop that cannot
// be asked is taken to have one.
bool HasReader() {
    const QString asker = QStandardPaths::findExecutable("xdg-mime");
    if (asker.isEmpty())
        return true;
    QProcess process;
    process.start(asker, {"query", "default", "application/pdf"});
    return !process.waitForFinished(answerMilliseconds) || !process.readAllStandardOutput().trimmed().isEmpty();
}

int Open(QWidget& window, const Path& folder, const std::function<bool(const Path&)>& openPdf) {
    const Path pdf = folder / "manual.pdf";
    if (FileExists(pdf) && openPdf(pdf))
        return opened;
    if (CManualWindow::Show(window, folder / "manual.md"))
        return opened;
    return FileExists(pdf) ? noReader : fileNotFound;
}

} // namespace

bool OpenWithReader(const Path& pdf) {
    return HasReader() && QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(Utf8Of(pdf))));
}

void OpenOnlineManual(QWidget& window, IPrompter& prompter, const Path& folder,
                      const std::function<bool(const Path&)>& openPdf) {
    const int result = Open(window, folder, openPdf);
    if (result <= 32)
        prompter.ShowVelmorMessage(
            "Failed to open the online manual!\nManual.pdf not found or Adobe Acrobat Reader "
            "not Installed!\n Error Code :" +
            std::to_string(result));
}

} // namespace velmor
