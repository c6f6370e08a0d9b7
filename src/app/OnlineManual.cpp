#include "app/OnlineManual.h"

#include "platform/Files.h"
#include "platform/SystemPaths.h"
#include "scene/Prompter.h"
#include "views/Text.h"

#include <QDesktopServices>
#include <QUrl>

namespace velmor {

namespace {

// What the shell of the desktop calls these reasons.
constexpr int opened = 33;
constexpr int fileNotFound = 2;
constexpr int noReader = 31;

int OpenWithReader(const Path& file) {
    if (!FileExists(file))
        return fileNotFound;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(Utf8Of(file)))) ? opened : noReader;
}

} // namespace

void OpenOnlineManual(IPrompter& prompter) {
    const int result = OpenWithReader(ProgramFolder() / "manual.pdf");
    if (result <= 32)
        prompter.ShowVelmorMessage(
            "Failed to open the online manual!\nManual.pdf not found or Adobe Acrobat Reader "
            "not Installed!\n Error Code :" +
            std::to_string(result));
}

} // namespace velmor
