#include "views/prompter/QtPrompter.h"

#include "scene/DialogRequests.h"
#include "views/dialogs/AddColorDialog.h"
#include "views/dialogs/ColorKeyDialog.h"
#include "views/dialogs/FlipDialog.h"
#include "views/dialogs/FlipbookDialog.h"
#include "views/dialogs/GridSettingsDialog.h"
#include "views/dialogs/ImportSettingsDialog.h"
#include "views/dialogs/RotateDialog.h"
#include "views/dialogs/RunDialog.h"

namespace velmor {

std::optional<CColorValues> CQtPrompter::AskColor(const CColorRequest& request) {
    return RunDialog<CAddColorDialog>(Owner(), request);
}

std::optional<int> CQtPrompter::AskImportThreshold(int current) {
    return RunDialog<CImportSettingsDialog>(Owner(), current);
}

CFlipbookAnswer CQtPrompter::AskFlipbook(const CFlipbookRequest& request) {
    CFlipbookDialog dialog(Owner(), request);
    const bool confirmed = dialog.exec() == QDialog::Accepted;
    return {confirmed, dialog.Values(request.initial)};
}

std::optional<CRotationValues> CQtPrompter::AskRotation() {
    return RunDialog<CRotateDialog>(Owner());
}

std::optional<FlipDirection> CQtPrompter::AskFlip() {
    return RunDialog<CFlipDialog>(Owner());
}

std::optional<CColorKeyValues> CQtPrompter::AskColorKey(const CColorKeyRequest& request) {
    return RunDialog<CColorKeyDialog>(Owner(), request);
}

std::optional<CGridSettings> CQtPrompter::AskGridSettings(const CGridSettingsRequest& request) {
    return RunDialog<CGridSettingsDialog>(Owner(), request);
}

} // namespace velmor
