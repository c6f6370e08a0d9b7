#pragma once

#include "scene/DialogRequests.h"
#include "scene/Prompter.h"

#include <any>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmor::testing {

/// Answers the document from a script and keeps everything it said. Dialog answers are taken in order; an answer
/// that the dialog's rule refuses is followed by the next one, as a user would try again. A dialog without an
/// answer left is cancelled.
class CScriptedPrompter final : public IPrompter {
public:
    /// Every text shown, in order; Velmor messages and questions as well.
    std::vector<std::string> messages;
    /// Those of the texts that the dialog "Velmor Message!" showed.
    std::vector<std::string> velmorMessages;
    /// Answers to Confirm() and AskYesNo(), in order; true when there are none left.
    std::deque<bool> confirmations;
    /// Texts of the progress, in order.
    std::vector<std::string> progressTexts;
    /// The call of Report() at which the stop button counts as pressed; 0 for never.
    int stopAtReport = 0;

    /// Answers of dialogs, in order: values of the type that the dialog returns.
    template<class Values>
    void Answer(Values values) {
        m_answers.emplace_back(std::move(values));
    }
    /// The next dialog is cancelled.
    void Cancel() { m_answers.emplace_back(); }
    bool AllAnswersTaken() const { return m_answers.empty(); }
    /// The texts since the last call.
    std::vector<std::string> TakeMessages() { return std::exchange(messages, {}); }
    /// The request of the last dialog of a kind, for tests of what it was handed.
    std::any lastRequest;

    void ShowMessage(const std::string& text) override { messages.push_back(text); }
    void ShowVelmorMessage(const std::string& text) override {
        messages.push_back(text);
        velmorMessages.push_back(text);
    }
    /// What the last Confirm() said of what it asks for.
    std::optional<Consequence> lastConsequence;
    bool Confirm(const std::string& text, Consequence consequence) override {
        lastConsequence = consequence;
        velmorMessages.push_back(text);
        return TakeConfirmation(text);
    }
    bool AskYesNo(const std::string& text) override { return TakeConfirmation(text); }
    std::unique_ptr<IProgress> BeginProgress(const std::string&) override {
        return std::make_unique<CProgress>(*this);
    }
    std::shared_ptr<void> BeginWait() override { return nullptr; }

    std::optional<CSceneSettings> AskSceneSettings(const CSceneSettingsRequest& request) override {
        return Ask<CSceneSettings>(request, request.accept);
    }
    std::optional<std::string> AskSceneToOpen(const std::vector<std::string>& scenes) override {
        return Ask<std::string>(scenes);
    }
    std::optional<std::string> AskDatabaseFolder(const std::string& current) override {
        return Ask<std::string>(current);
    }
    /// Called when a name is asked for, while what is to be named is at hand.
    std::function<void()> onAskName;
    std::optional<std::string> AskName(const CNameRequest& request) override {
        if (onAskName)
            onAskName();
        return Ask<std::string>(request, request.accept);
    }
    std::optional<CNewCelValues> AskNewCel(const CNewCelRequest& request) override {
        return Ask<CNewCelValues>(request, request.accept);
    }
    std::optional<int> AskLevel(const CLevelRequest& request) override { return Ask<int>(request); }
    std::optional<std::pair<int, int>> AskLevelsToSwap(const std::vector<std::string>& levelNames) override {
        return Ask<std::pair<int, int>>(levelNames);
    }
    std::optional<int> AskFrameCount(const CFrameCountRequest& request) override {
        return Ask<int>(request, request.accept);
    }
    std::optional<CCellDataForm> AskCellData(const CCellDataRequest& request) override {
        return Ask<CCellDataForm>(request, request.accept);
    }
    std::optional<CBlurForm> AskBlur(const CBlurRequest& request) override {
        return Ask<CBlurForm>(request, request.accept);
    }
    std::optional<double> AskTransparency(const CTransparencyRequest& request) override {
        return Ask<double>(request, request.accept);
    }
    std::optional<CCameraForm> AskCameraData(const CCameraDataRequest& request) override {
        return Ask<CCameraForm>(request);
    }
    std::optional<int> AskMotionPathSetup(int current) override { return Ask<int>(current); }
    CInbetweenAnswer AskInbetween(const CInbetweenRequest& request) override {
        return Ask<CInbetweenAnswer>(request).value_or(CInbetweenAnswer{false, request.initial});
    }
    void RunLineCheck(const CLineCheckRequest& request) override {
        while (const std::optional<int> frame = Ask<int>(request))
            request.showFrame(*frame);
    }
    std::optional<CColorValues> AskColor(const CColorRequest& request) override {
        return Ask<CColorValues>(request, request.accept);
    }
    std::optional<int> AskImportThreshold(int current) override { return Ask<int>(current); }
    CFlipbookAnswer AskFlipbook(const CFlipbookRequest& request) override {
        while (const std::optional<CFlipbookAnswer> answer = Ask<CFlipbookAnswer>(request))
            if (!answer->confirmed || !request.accept || request.accept(answer->settings))
                return *answer;
        return {false, request.initial};
    }
    std::optional<CRenderSetup> AskRenderSetup(const CRenderSetupRequest& request) override {
        return Ask<CRenderSetup>(request, request.accept);
    }
    /// The outputs that were offered.
    std::vector<CRenderedRequest> rendered;
    void OfferRendered(const CRenderedRequest& request) override { rendered.push_back(request); }
    std::optional<std::string> AskCompressor(const CCompressorRequest& request) override {
        return Ask<std::string>(request);
    }
    std::vector<Path> AskFilesToOpen(const CFileRequest& request) override {
        return Ask<std::vector<Path>>(request).value_or(std::vector<Path>{});
    }
    std::optional<Path> AskFileToSave(const CFileRequest& request) override { return Ask<Path>(request); }
    std::optional<CRotationValues> AskRotation() override { return Ask<CRotationValues>(0); }
    std::optional<FlipDirection> AskFlip() override { return Ask<FlipDirection>(0); }
    std::optional<CColorKeyValues> AskColorKey(const CColorKeyRequest& request) override {
        return Ask<CColorKeyValues>(request, request.accept);
    }
    /// An answer is the type, 0 to 4.
    bool AskDropType(const CDropTypeRequest& request) override {
        const std::optional<int> type = Ask<int>(request.screenPoint);
        if (type)
            request.choices.ChooseType(*type);
        return type.has_value();
    }
    std::optional<CGridSettings> AskGridSettings(const CGridSettingsRequest& request) override {
        return Ask<CGridSettings>(request, request.accept);
    }
    std::optional<Appearance> AskAppearance(const CAppearanceRequest& request) override {
        return Ask<Appearance>(request);
    }
    /// Does what the test has put here.
    std::function<void(CSceneManager&)> useSceneManager;
    void RunSceneManager(CSceneManager& manager) override {
        if (useSceneManager)
            useSceneManager(manager);
    }

    /// Texts of the status bar, in order.
    std::vector<std::string> statusTexts;
    void ShowStatus(const std::string& text) override { statusTexts.push_back(text); }
    /// Asks as long as something plays, but not for ever.
    void WaitWhilePlaying(const std::string& status, const std::function<bool()>& isPlaying) override {
        statusTexts.push_back(status);
        for (int polls = 0; polls < 10000 && isPlaying(); ++polls)
            continue;
    }
    /// What the test does with the record dialog; the answer is whether to save.
    std::function<bool(CSoundRecorder&)> useRecorder;
    bool RunRecorder(CSoundRecorder& recorder) override { return useRecorder && useRecorder(recorder); }
    /// What the test does with the movie player.
    std::function<void(CMovie&)> usePlayer;
    void PlayMovie(CMovie& movie) override {
        if (usePlayer)
            usePlayer(movie);
    }

private:
    class CProgress final : public IProgress {
    public:
        explicit CProgress(CScriptedPrompter& prompter) : m_prompter(prompter) {}
        void Report(int, const std::string& text) override {
            m_prompter.progressTexts.push_back(text);
            m_stopRequested |= static_cast<int>(m_prompter.progressTexts.size()) == m_prompter.stopAtReport;
        }
        bool TakeStopRequest() override { return std::exchange(m_stopRequested, false); }

    private:
        CScriptedPrompter& m_prompter;
        bool m_stopRequested = false;
    };

    bool TakeConfirmation(const std::string& text) {
        messages.push_back(text);
        if (confirmations.empty())
            return true;
        const bool answer = confirmations.front();
        confirmations.pop_front();
        return answer;
    }

    template<class Values, class Request, class Accept = std::nullptr_t>
    std::optional<Values> Ask(const Request& request, const Accept& accept = nullptr) {
        lastRequest = request;
        while (!m_answers.empty()) {
            const std::any answer = std::move(m_answers.front());
            m_answers.pop_front();
            if (!answer.has_value())
                return std::nullopt;
            const Values* values = std::any_cast<Values>(&answer);
            if (values == nullptr) {
                ADD_FAILURE() << "the script answers another dialog than the one that was asked";
                return std::nullopt;
            }
            if constexpr (!std::is_same_v<Accept, std::nullptr_t>) {
                if (accept && !accept(*values))
                    continue;
            }
            return *values;
        }
        return std::nullopt;
    }

    std::deque<std::any> m_answers;
};

} // namespace velmor::testing
