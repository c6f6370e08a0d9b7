#include "scene/SilentPrompter.h"

#include "scene/DialogRequests.h"

namespace velmor {

bool CSilentPrompter::Confirm(const std::string& text, Consequence) {
    ShowMessage(text);
    return false;
}

bool CSilentPrompter::AskYesNo(const std::string& text) {
    ShowMessage(text);
    return false;
}

std::unique_ptr<IProgress> CSilentPrompter::BeginProgress(const std::string&) {
    return std::make_unique<CNoProgress>();
}

std::optional<CSceneSettings> CSilentPrompter::AskSceneSettings(const CSceneSettingsRequest&) {
    return std::nullopt;
}

std::optional<std::string> CSilentPrompter::AskSceneToOpen(const std::vector<std::string>&) {
    return std::nullopt;
}

std::optional<std::string> CSilentPrompter::AskDatabaseFolder(const std::string&) {
    return std::nullopt;
}

std::optional<std::string> CSilentPrompter::AskName(const CNameRequest&) {
    return std::nullopt;
}

std::optional<CNewCelValues> CSilentPrompter::AskNewCel(const CNewCelRequest&) {
    return std::nullopt;
}

std::optional<int> CSilentPrompter::AskLevel(const CLevelRequest&) {
    return std::nullopt;
}

std::optional<std::pair<int, int>> CSilentPrompter::AskLevelsToSwap(const std::vector<std::string>&) {
    return std::nullopt;
}

std::optional<int> CSilentPrompter::AskFrameCount(const CFrameCountRequest&) {
    return std::nullopt;
}

std::optional<CCellDataForm> CSilentPrompter::AskCellData(const CCellDataRequest&) {
    return std::nullopt;
}

std::optional<CBlurForm> CSilentPrompter::AskBlur(const CBlurRequest&) {
    return std::nullopt;
}

std::optional<double> CSilentPrompter::AskTransparency(const CTransparencyRequest&) {
    return std::nullopt;
}

std::optional<CCameraForm> CSilentPrompter::AskCameraData(const CCameraDataRequest&) {
    return std::nullopt;
}

std::optional<int> CSilentPrompter::AskMotionPathSetup(int) {
    return std::nullopt;
}

CInbetweenAnswer CSilentPrompter::AskInbetween(const CInbetweenRequest& request) {
    return {false, request.initial};
}

void CSilentPrompter::RunLineCheck(const CLineCheckRequest&) {}

std::optional<CColorValues> CSilentPrompter::AskColor(const CColorRequest&) {
    return std::nullopt;
}

std::optional<int> CSilentPrompter::AskImportThreshold(int) {
    return std::nullopt;
}

CFlipbookAnswer CSilentPrompter::AskFlipbook(const CFlipbookRequest& request) {
    return {false, request.initial};
}

std::optional<CRenderSetup> CSilentPrompter::AskRenderSetup(const CRenderSetupRequest&) {
    return std::nullopt;
}

std::optional<std::string> CSilentPrompter::AskCompressor(const CCompressorRequest&) {
    return std::nullopt;
}

std::vector<Path> CSilentPrompter::AskFilesToOpen(const CFileRequest&) {
    return {};
}

std::optional<Path> CSilentPrompter::AskFileToSave(const CFileRequest&) {
    return std::nullopt;
}

std::optional<CRotationValues> CSilentPrompter::AskRotation() {
    return std::nullopt;
}

std::optional<FlipDirection> CSilentPrompter::AskFlip() {
    return std::nullopt;
}

std::optional<CColorKeyValues> CSilentPrompter::AskColorKey(const CColorKeyRequest&) {
    return std::nullopt;
}

bool CSilentPrompter::AskDropType(const CDropTypeRequest&) {
    return false;
}

std::optional<CGridSettings> CSilentPrompter::AskGridSettings(const CGridSettingsRequest&) {
    return std::nullopt;
}

std::optional<Appearance> CSilentPrompter::AskAppearance(const CAppearanceRequest&) {
    return std::nullopt;
}

void CSilentPrompter::RunSceneManager(CSceneManager&) {}

void CSilentPrompter::WaitWhilePlaying(const std::string&, const std::function<bool()>&) {}

bool CSilentPrompter::RunRecorder(CSoundRecorder&) {
    return false;
}

void CSilentPrompter::PlayMovie(CMovie&) {}

} // namespace velmor
