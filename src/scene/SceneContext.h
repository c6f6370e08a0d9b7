#pragma once

#include "platform/files/Profile.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "scene/ViewList.h"

#include <string>

namespace velmor {

/// What the document's operations work on: its values, its way to the user, its views and the settings. The
/// document owns the model and the view list; prompter and profile outlive it.
struct CSceneContext {
    CSceneModel& model;
    IPrompter& prompter;
    CViewList& views;
    CProfile& profile;

    void Update(UpdateHint hint) const { views.UpdateAllViews(hint); }
    void Show(const std::string& text) const { prompter.ShowMessage(text); }
    /// Shows the status' text when it failed and has one; returns whether it succeeded.
    [[nodiscard]] bool Report(const CStatus& status) const {
        if (!status && !status.Message().empty())
            Show(status.Message());
        return static_cast<bool>(status);
    }
    /// Shows `text` unless `condition` holds; returns the condition.
    [[nodiscard]] bool Require(bool condition, const char* text) const {
        if (!condition)
            Show(text);
        return condition;
    }
};

} // namespace velmor
