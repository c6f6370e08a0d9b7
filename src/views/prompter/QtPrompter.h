#pragma once

#include "scene/Prompter.h"
#include "views/dialogs/DialogSizes.h"
#include "views/prompter/FileChooser.h"

class QWidget;

namespace velmor {

/// The way to the user through the window: message boxes and dialogs over the window that is its parent, once there
/// is one.
class CQtPrompter final : public IPrompter {
public:
    CQtPrompter() = default;
    explicit CQtPrompter(QWidget& parent) { SetParent(parent); }
    /// `parent` outlives the prompter's last dialog. `profile` keeps the dialogs' sizes, the filters of files and
    /// how the player was left from one run to the next; without one they are kept for the run.
    void SetParent(QWidget& parent, CProfile* profile = nullptr) {
        m_parent = &parent;
        m_profile = profile != nullptr ? profile : &m_ownProfile;
        m_sizes.emplace(parent, profile);
        m_files.SetProfile(profile);
    }

    void ShowMessage(const std::string& text) override;
    void ShowVelmorMessage(const std::string& text) override;
    [[nodiscard]] bool Confirm(const std::string& text, Consequence consequence = Consequence::Final) override;
    [[nodiscard]] bool AskYesNo(const std::string& text) override;
    std::unique_ptr<IProgress> BeginProgress(const std::string& title) override;
    std::shared_ptr<void> BeginWait() override;
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
    void OfferRendered(const CRenderedRequest& request) override;
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
    void ShowStatus(const std::string& text) override;
    void WaitWhilePlaying(const std::string& status, const std::function<bool()>& isPlaying) override;
    [[nodiscard]] bool RunRecorder(CSoundRecorder& recorder) override;
    void PlayMovie(CMovie& movie) override;

private:
    /// What the next dialog or message stands over: the dialog in front, else the window once it is shown.
    QWidget* Owner() const;

    QWidget* m_parent = nullptr;
    CProfile m_ownProfile; ///< where there is no other
    CProfile* m_profile = &m_ownProfile;
    std::optional<CDialogSizes> m_sizes;
    CFileChooser m_files;
};

} // namespace velmor
