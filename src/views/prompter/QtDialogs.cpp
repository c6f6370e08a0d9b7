#include "views/dialogs/DropTypeDialog.h"
#include "views/dialogs/FlipbookDialog.h"
#include "views/dialogs/InbetweenDataDialog.h"
#include "views/prompter/DialogTable.h"
#include "views/prompter/QtPrompter.h"

// The dialogs of the document's requests.

namespace velmor {

template<class Request>
void CQtPrompter::Run(CDialogOf<Request>& asked) {
    DialogFor<Request> dialog(Owner(), asked.request);
    if constexpr (showsInPicture<Request>)
        PlaceBesidePicture(dialog);
    if (dialog.exec() == QDialog::Accepted)
        asked.answer = dialog.Values();
}

void CQtPrompter::Run(CDialogOf<CInbetweenRequest>& asked) {
    CInbetweenDataDialog dialog(Owner(), asked.request);
    const bool confirmed = dialog.exec() == QDialog::Accepted;
    asked.answer = {confirmed, dialog.Values()};
}

void CQtPrompter::Run(CDialogOf<CFlipbookRequest>& asked) {
    CFlipbookDialog dialog(Owner(), asked.request);
    const bool confirmed = dialog.exec() == QDialog::Accepted;
    asked.answer = {confirmed, dialog.Values(asked.request.initial)};
}

void CQtPrompter::Run(CDialogOf<CDropTypeRequest>& asked) {
    CDropTypeDialog dialog(Owner(), asked.request.choices);
    dialog.PlaceAt({asked.request.screenPoint.x, asked.request.screenPoint.y});
    asked.answer = dialog.exec() == QDialog::Accepted;
}

void CQtPrompter::Run(CDialogOf<COpenFilesRequest>& asked) {
    asked.answer = m_files.AskToOpen(Owner(), asked.request);
}

void CQtPrompter::Run(CDialogOf<CSaveFileRequest>& asked) {
    if (const std::vector<Path> files = m_files.AskToSave(Owner(), asked.request); !files.empty())
        asked.answer = files.front();
}

void CQtPrompter::ShowDialog(CAnyDialog dialog) {
    std::visit([this](auto* asked) { Run(*asked); }, dialog);
}

} // namespace velmor
