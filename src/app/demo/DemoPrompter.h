#pragma once

#include "scene/DialogRequests.h"
#include "scene/SilentPrompter.h"

#include <deque>
#include <variant>

namespace velmor::demo {

/// A user who knows beforehand what every dialog will be answered. Any message, and any dialog that comes when
/// another one or none is expected, means that things went wrong; from then on every dialog is cancelled, and
/// messages, which only follow from the first, are not shown.
class CDemoPrompter : public CSilentPrompter {
public:
    using Answer = std::variant<CSceneSettings, std::string, CNewCelValues, int, CCellDataForm, CBlurForm, double,
                                CCameraForm, CInbetweenAnswer, CColorValues>;

    /// Messages and progress go to `out`, which must outlive it.
    explicit CDemoPrompter(IPrompter& out) : m_out(out) {}

    /// The answer to the next dialog.
    void Expect(Answer answer) { m_answers.push_back(std::move(answer)); }
    bool HasFailed() const { return m_failed; }
    /// Fails when a dialog that was expected has not come.
    void RequireAllAsked();

    void ShowMessage(const std::string& text) override;
    std::unique_ptr<IProgress> BeginProgress(const std::string& title) override {
        return m_out.BeginProgress(title);
    }

    std::optional<CSceneSettings> AskSceneSettings(const CSceneSettingsRequest& request) override;
    std::optional<std::string> AskName(const CNameRequest& request) override;
    std::optional<CNewCelValues> AskNewCel(const CNewCelRequest& request) override;
    std::optional<int> AskLevel(const CLevelRequest& request) override;
    std::optional<CCellDataForm> AskCellData(const CCellDataRequest& request) override;
    std::optional<CBlurForm> AskBlur(const CBlurRequest& request) override;
    std::optional<double> AskTransparency(const CTransparencyRequest& request) override;
    std::optional<CCameraForm> AskCameraData(const CCameraDataRequest& request) override;
    CInbetweenAnswer AskInbetween(const CInbetweenRequest& request) override;
    std::optional<CColorValues> AskColor(const CColorRequest& request) override;

private:
    template<class Values>
    std::optional<Values> Take();
    /// As Take(), for a dialog that may refuse the values.
    template<class Values>
    std::optional<Values> Take(const AcceptRule<Values>& accept);

    IPrompter& m_out;
    std::deque<Answer> m_answers;
    bool m_failed = false;
};

} // namespace velmor::demo
