#include "app/demo/DemoDatabase.h"

#include "app/demo/Animator.h"
#include "app/demo/DemoScene.h"
#include "platform/files/ClaimedFile.h"
#include "platform/files/Profile.h"
#include "scene/SceneMaking.h"
#include "scene/Settings.h"

namespace velmor::demo {

namespace {

bool MakeIn(const std::string& database, IPrompter& prompter) {
    CProfile profile;
    Set(profile, setting::databaseDir, database);
    Set(profile, setting::historyMegabytes, 0);
    CDemoPrompter user(prompter);
    CVelmorltDoc document(user, profile, {});
    CAnimator animator(document, user);
    return MakeDemoScene(animator);
}

} // namespace

// The scene is made in a database of its own inside of the wanted one, which gets it when it is whole.
bool MakeDemoDatabase(const std::string& database, IPrompter& prompter) {
    const CScenePaths place(WithSeparator(database), demoScene);
    if (FolderExists(place.SceneFolder())) {
        prompter.ShowMessage("Scene already exists. Use 'Open Scene' to open it.");
        return false;
    }
    const Path folder = FolderOf(place.SceneFolder());
    const std::optional<CClaimedFolder> making = CreateFolder(folder) ? CClaimedFolder::Make(folder) : std::nullopt;
    if (!making) {
        prompter.ShowMessage(sceneNotMade);
        return false;
    }
    const std::string own = WithSeparator(Utf8Of(making->Name()));
    if (!MakeIn(own, prompter))
        return false;
    if (PlaceScene(CScenePaths(own, demoScene).SceneFolder(), place))
        return true;
    prompter.ShowMessage(sceneNotMade);
    return false;
}

} // namespace velmor::demo
