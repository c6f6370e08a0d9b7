#pragma once

#include "scene/Prompter.h"
#include "views/dialogs/DialogSizes.h"
#include "views/prompter/FileChooser.h"

class QWidget;

namespace velmor {

class CDialog;

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
    void ShowStatus(const std::string& text) override;

    void RunHistory(const CHistoryRequest& request) override;
    void RunLineCheck(const CLineCheckRequest& request) override;
    void RunSceneManager(CSceneManager& manager) override;
    void OfferRendered(const CRenderedRequest& request) override;
    void WaitWhilePlaying(const std::string& status, const std::function<bool()>& isPlaying) override;
    [[nodiscard]] bool RunRecorder(CSoundRecorder& recorder) override;
    void PlayMovie(CMovie& movie) override;

protected:
    void ShowDialog(CAnyDialog dialog) override;

private:
    /// What the dialog holds when it is confirmed becomes the answer.
    template<class Request>
    void Run(CDialogOf<Request>& asked);
    // Those that are placed, or answer when they are cancelled, too.
    void Run(CDialogOf<CInbetweenRequest>& asked);
    void Run(CDialogOf<CFlipbookRequest>& asked);
    void Run(CDialogOf<CDropTypeRequest>& asked);
    void Run(CDialogOf<COpenFilesRequest>& asked);
    void Run(CDialogOf<CSaveFileRequest>& asked);
    /// What the next dialog or message stands over: the dialog in front, else the window once it is shown.
    QWidget* Owner() const;
    /// Has the dialog open beside where the window shows frames. Where it shows none, beside `instead`; null: the
    /// dialog is left where it would be.
    void PlaceBesidePicture(CDialog& dialog, const QWidget* instead = nullptr) const;

    QWidget* m_parent = nullptr;
    CProfile m_ownProfile; ///< where there is no other
    CProfile* m_profile = &m_ownProfile;
    std::optional<CDialogSizes> m_sizes;
    CFileChooser m_files;
};

} // namespace velmor
