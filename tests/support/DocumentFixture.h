#pragma once

#include "ScriptedPrompter.h"
#include "TempFolder.h"
#include "platform/files/Profile.h"
#include "scene/CelPainting.h"
#include "scene/CommandState.h"
#include "scene/SceneHistory.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "scene/ViewList.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmor::testing {

/// A document over a folder, a profile and a scripted user of the test's own. `hints` holds what the views were
/// told.
class CDocumentFixture : public ::testing::Test, public IDocView {
protected:
    CDocumentFixture() { StartDocument(); }
    ~CDocumentFixture() override { doc.reset(); }

    /// Ends the running document, if any, and starts another on the same profile: a restart of the program.
    void StartDocument() {
        doc.reset();
        doc = std::make_unique<CVelmorltDoc>(prompter, profile,
                                             CDocumentFolders{folder.Path(), folder / "data", trash, journals});
        doc->Views().Add(*this);
        doc->Scenes().ReopenLastScene();
        hints.clear();
    }

    void OnUpdate(UpdateHint hint) override { hints.push_back(static_cast<int>(hint)); }
    std::vector<int> TakeHints() { return std::exchange(hints, {}); }

    /// The image under edit, to be prepared for a test; there must be one.
    CCelImg& EditedImage() {
        CCelImg* edited = nullptr;
        doc->Painting().Change("Test", [&](CCelImg& image) {
            edited = &image;
            return CPaintResult();
        });
        return *edited;
    }

    void NewScene(const std::string& name, int frames = 10, int width = 64, int height = 48) {
        CSceneSettings settings;
        settings.name = name;
        settings.length = frames;
        settings.geometry.width = width;
        settings.geometry.height = height;
        settings.preset = customPreset;
        prompter.Answer(settings);
        doc->Scenes().NewScene();
    }

    Path Database() const { return folder / "Database"; }
    Path SceneFolder(const std::string& scene) const { return Database() / (scene + ".scene"); }

    CTempFolder folder;
    Path journals; ///< none, unless a test gives the next document a folder for them
    CTrash trash;  ///< none, unless a test gives the next document one
    CProfile profile;
    CScriptedPrompter prompter;
    std::vector<int> hints;
    std::unique_ptr<CVelmorltDoc> doc;
};

} // namespace velmor::testing
