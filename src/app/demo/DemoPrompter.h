#pragma once

#include "scene/DialogRequests.h"
#include "scene/SilentPrompter.h"

#include <any>
#include <deque>
#include <optional>

namespace velmor::demo {

/// A user who knows beforehand what every dialog will be answered. Any message, and any dialog that comes when
/// another one or none is expected, means that things went wrong; from then on every dialog is cancelled, and
/// messages, which only follow from the first, are not shown.
class CDemoPrompter : public CSilentPrompter {
public:
    /// Messages and progress go to `out`, which must outlive it.
    explicit CDemoPrompter(IPrompter& out) : m_out(out) {}

    /// What the next dialog holds when it is confirmed.
    template<class Values>
    void Expect(Values values) {
        m_answers.emplace_back(std::move(values));
    }
    bool HasFailed() const { return m_failed; }
    /// Fails when a dialog that was expected has not come.
    void RequireAllAsked();

    void ShowMessage(const std::string& text) override;
    std::unique_ptr<IProgress> BeginProgress(const std::string& title) override {
        return m_out.BeginProgress(title);
    }

protected:
    void ShowDialog(CAnyDialog dialog) override;

private:
    template<class Request>
    void Play(CDialogOf<Request>& asked);
    /// Takes the next answer, if it is of this type.
    template<class Answer>
    bool Take(Answer& answer);
    template<class Values>
    bool Take(std::optional<Values>& answer);

    IPrompter& m_out;
    std::deque<std::any> m_answers;
    bool m_failed = false;
};

} // namespace velmor::demo
