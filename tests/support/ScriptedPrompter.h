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
    void ForgetAnswers() { m_answers.clear(); }
    /// The texts since the last call.
    std::vector<std::string> TakeMessages() { return std::exchange(messages, {}); }
    /// The request of the last dialog of a kind, for tests of what it was handed.
    std::any lastRequest;
    /// Called while a dialog is open, before it is answered.
    std::function<void()> onDialog;

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

    /// Called when a name is asked for, while what is to be named is at hand.
    std::function<void()> onAskName;

    /// Does what the test has put here.
    std::function<void(const CHistoryRequest&)> useHistory;
    void RunHistory(const CHistoryRequest& request) override {
        if (useHistory)
            useHistory(request);
    }
    void RunLineCheck(const CLineCheckRequest& request) override {
        lastRequest = request;
        while (const std::optional<int> frame = Take<int>([](int) { return true; }))
            request.showFrame(*frame);
    }
    /// The outputs that were offered.
    std::vector<CRenderedRequest> rendered;
    void OfferRendered(const CRenderedRequest& request) override { rendered.push_back(request); }
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

    void ShowDialog(CAnyDialog dialog) override {
        std::visit(
            [this](auto* asked) {
                lastRequest = asked->request;
                if (onDialog)
                    onDialog();
                Play(*asked);
            },
            dialog);
    }

    template<class Request>
    void Play(CDialogOf<Request>& asked) {
        if constexpr (std::is_same_v<Request, CNameRequest>) {
            if (onAskName)
                onAskName();
        }
        Answer(asked, asked.answer);
    }
    /// An answer is the type, 0 to 4.
    void Play(CDialogOf<CDropTypeRequest>& asked) {
        if (const std::optional<int> type = Take<int>([](int) { return true; })) {
            asked.request.choices.ChooseType(*type);
            asked.answer = true;
        }
    }
    void Play(CDialogOf<CInbetweenRequest>& asked) {
        asked.answer = {false, asked.request.initial};
        Answer(asked, asked.answer);
    }
    void Play(CDialogOf<CFlipbookRequest>& asked) {
        const auto accepts = [&](const CFlipbookAnswer& answer) {
            return !answer.confirmed || !asked.request.accept || asked.request.accept(answer.settings);
        };
        asked.answer = Take<CFlipbookAnswer>(accepts).value_or(CFlipbookAnswer{false, asked.request.initial});
    }

    template<class Request, class Values>
    void Answer(CDialogOf<Request>& asked, std::optional<Values>& answer) {
        answer = Take<Values>([&]([[maybe_unused]] const Values& values) {
            if constexpr (requires { asked.request.accept(values); })
                return !asked.request.accept || asked.request.accept(values);
            else
                return true;
        });
    }
    template<class Request, class Values>
    void Answer(CDialogOf<Request>&, Values& answer) {
        if (std::optional<Values> taken = Take<Values>([](const Values&) { return true; }))
            answer = std::move(*taken);
    }

    /// The next answer that is accepted; nothing when the dialog is cancelled.
    template<class Values, class Accept>
    std::optional<Values> Take(const Accept& accept) {
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
            if (accept(*values))
                return *values;
        }
        return std::nullopt;
    }

    std::deque<std::any> m_answers;
};

} // namespace velmor::testing
