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
    void ShowStatus(const std::string&) override {}
    std::unique_ptr<IProgress> BeginProgress(const std::string& title) override;
    std::shared_ptr<void> BeginWait() override { return nullptr; }

    void RunHistory(const CHistoryRequest&) override {}
    void RunLineCheck(const CLineCheckRequest&) override {}
    void RunSceneManager(CSceneManager&) override {}
    void OfferRendered(const CRenderedRequest&) override {}
    void WaitWhilePlaying(const std::string&, const std::function<bool()>&) override {}
    [[nodiscard]] bool RunRecorder(CSoundRecorder&) override { return false; }
    void PlayMovie(CMovie&) override {}

protected:
    void ShowDialog(CAnyDialog) override {}
};

} // namespace velmor
