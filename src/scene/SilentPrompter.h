#pragma once

#include "scene/Prompter.h"

namespace velmor {

/// For work without a user: questions are answered with no and dialogs are cancelled. What shows messages, or
/// answers some of the dialogs, derives from it.
class CSilentPrompter : public IPrompter {
public:
    void ShowVelmorMessage(const std::string& text) override { ShowMessage(text); }
    [[nodiscard]] bool Confirm(const std::string& text, Consequence consequence) override;
    [[nodiscard]] bool AskYesNo(const std::string& text) override;
    std::unique_ptr<IProgress> BeginProgress(const std::string& title) override;
    std::shared_ptr<void> BeginWait() override { return nullptr; }

    std::optional<CSceneSettings> AskSceneSettings(const CSceneSettingsRequest& request) override;
    std::optional<std::string> AskSceneToOpen(const std::vector<std::string>& scenes) override;
    std::optional<std::string> AskDatabaseFolder(const std::string& current) override;
    std::optional<std::string> AskName(const CNameRequest& request) override;
    std::optional<CNewCelValues> AskNewCel(const CNewCelRequest& request) override;
    std::optional<int> AskLevel(const CLevelRequest& request) override;
    std::optional<std::pair<int, int>> AskLevelsToSwap(const std::vector<std::string>& levelNames) override;
    std::optional<int> AskFrameCount(const CFrameCountRequest& request) override;
    std::optional<CCellDataForm> AskCellData(const CCellDataRequest& request) override;
    std::optional<CBlurForm> AskBlur(const CBlurRequest& request) override;
    std::optional<double> AskTransparency(const CTransparencyRequest& request) override;
    std::optional<CCameraForm> AskCameraData(const CCameraDataRequest& request) override;
    std::optional<int> AskMotionPathSetup(int current) override;
    CInbetweenAnswer AskInbetween(const CInbetweenRequest& request) override;
    void RunLineCheck(const CLineCheckRequest& request) override;
    std::optional<CColorValues> AskColor(const CColorRequest& request) override;
    std::optional<int> AskImportThreshold(int current) override;
    CFlipbookAnswer AskFlipbook(const CFlipbookRequest& request) override;
    std::optional<CRenderSetup> AskRenderSetup(const CRenderSetupRequest& request) override;
    void OfferRendered(const CRenderedRequest&) override {}
    std::optional<std::string> AskCompressor(const CCompressorRequest& request) override;
    std::vector<Path> AskFilesToOpen(const CFileRequest& request) override;
    std::optional<Path> AskFileToSave(const CFileRequest& request) override;
    std::optional<CRotationValues> AskRotation() override;
    std::optional<FlipDirection> AskFlip() override;
    std::optional<CColorKeyValues> AskColorKey(const CColorKeyRequest& request) override;
    [[nodiscard]] bool AskDropType(const CDropTypeRequest& request) override;
    std::optional<CGridSettings> AskGridSettings(const CGridSettingsRequest& request) override;
    std::optional<Appearance> AskAppearance(const CAppearanceRequest& request) override;
    void RunSceneManager(CSceneManager& manager) override;
    void ShowStatus(const std::string&) override {}
    void WaitWhilePlaying(const std::string& status, const std::function<bool()>& isPlaying) override;
    [[nodiscard]] bool RunRecorder(CSoundRecorder& recorder) override;
    void PlayMovie(CMovie& movie) override;
};

} // namespace velmor
