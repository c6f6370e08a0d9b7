#include "scene/DialogRequests.h"
#include "views/dialogs/AppearanceDialog.h"
#include "views/dialogs/DatabaseFolderDialog.h"
#include "views/dialogs/FrameCountDialog.h"
#include "views/dialogs/NameDialog.h"
#include "views/dialogs/NewCelDialog.h"
#include "views/dialogs/OpenSceneDialog.h"
#include "views/dialogs/RunDialog.h"
#include "views/dialogs/SceneManagerDialog.h"
#include "views/dialogs/SceneSettingsDialog.h"
#include "views/dialogs/SelectLevelDialog.h"
#include "views/dialogs/SwapLevelsDialog.h"
#include "views/prompter/QtPrompter.h"

namespace velmor {

std::optional<CSceneSettings> CQtPrompter::AskSceneSettings(const CSceneSettingsRequest& request) {
    return RunDialog<CSceneSettingsDialog>(Owner(), request);
}

std::optional<std::string> CQtPrompter::AskSceneToOpen(const std::vector<std::string>& scenes) {
    return RunDialog<COpenSceneDialog>(Owner(), scenes);
}

std::optional<std::string> CQtPrompter::AskDatabaseFolder(const std::string& current) {
    return RunDialog<CDatabaseFolderDialog>(Owner(), current);
}

std::optional<std::string> CQtPrompter::AskName(const CNameRequest& request) {
    return RunDialog<CNameDialog>(Owner(), request);
}

std::optional<CNewCelValues> CQtPrompter::AskNewCel(const CNewCelRequest& request) {
    return RunDialog<CNewCelDialog>(Owner(), request);
}

std::optional<int> CQtPrompter::AskLevel(const CLevelRequest& request) {
    return RunDialog<CSelectLevelDialog>(Owner(), request);
}

std::optional<std::pair<int, int>> CQtPrompter::AskLevelsToSwap(const std::vector<std::string>& levelNames) {
    return RunDialog<CSwapLevelsDialog>(Owner(), levelNames);
}

std::optional<int> CQtPrompter::AskFrameCount(const CFrameCountRequest& request) {
    return RunDialog<CFrameCountDialog>(Owner(), request);
}

std::optional<Appearance> CQtPrompter::AskAppearance(const CAppearanceRequest& request) {
    return RunDialog<CAppearanceDialog>(Owner(), request);
}

void CQtPrompter::RunSceneManager(CSceneManager& manager) {
    CSceneManagerDialog(Owner(), manager).exec();
}

} // namespace velmor
