#include "views/prompter/QtPrompter.h"

#include "scene/DialogRequests.h"
#include "views/dialogs/CompressorDialog.h"
#include "views/dialogs/RenderSetupDialog.h"
#include "views/dialogs/RenderedDialog.h"
#include "views/dialogs/RunDialog.h"

namespace velmor {

std::optional<CRenderSetup> CQtPrompter::AskRenderSetup(const CRenderSetupRequest& request) {
    return RunDialog<CRenderSetupDialog>(Owner(), request);
}

void CQtPrompter::OfferRendered(const CRenderedRequest& request) {
    CRenderedDialog(Owner(), request).exec();
}

std::optional<std::string> CQtPrompter::AskCompressor(const CCompressorRequest& request) {
    return RunDialog<CCompressorDialog>(Owner(), request);
}

} // namespace velmor
