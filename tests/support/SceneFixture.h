#pragma once

#include "SceneAccess.h"
#include "ScriptedPrompter.h"
#include "TempFolder.h"
#include "scene/CommandState.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneContext.h"
#include "scene/SceneHistory.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneSaving.h"
#include "scene/SoundOperations.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace velmor::testing {

/// A scene "Test" that is open in a database of the test's own, without the document around it: what operations of
/// the document need to be tested bare. `hints` holds what the views were told.
class CSceneFixture : public ::testing::Test, public IDocView {
protected:
    CSceneFixture() {
        model.databaseFolder = WithSeparator(folder.Path().string());
        model.sceneName = "Test";
        model.sceneOpen = true;
        static_cast<void>(CreateFolder(model.Paths().SceneFolder()));
        views.Add(*this);
    }

    void OnUpdate(UpdateHint hint) override { hints.push_back(static_cast<int>(hint)); }
    std::vector<int> TakeHints() { return std::exchange(hints, {}); }
    CSceneContext Context() { return {model, prompter, views, profile}; }
    void Undo() { MoveThroughHistory(&CSceneHistory::Undo); }
    void Redo() { MoveThroughHistory(&CSceneHistory::Redo); }

    void MoveThroughHistory(void (CSceneHistory::*move)()) {
        CPaletteOperations palettes(Context());
        CSoundOperations soundOperations(Context());
        CSceneSaving saving(Context());
        CSceneLifecycle scenes(Context(), palettes, soundOperations, saving);
        CSceneHistory history(Context(), scenes, palettes);
        (history.*move)();
    }

    CTempFolder folder;
    CSceneModel model;
    CScene& scene = CSceneAccess::Of(model);
    CScriptedPrompter prompter;
    CViewList views;
    CProfile profile;
    std::vector<int> hints;
};

} // namespace velmor::testing
