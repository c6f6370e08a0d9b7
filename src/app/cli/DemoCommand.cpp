#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/demo/Animator.h"
#include "app/demo/DemoScene.h"
#include "platform/files/ClaimedFile.h"
#include "platform/files/Profile.h"
#include "scene/SceneMaking.h"
#include "scene/Settings.h"

namespace velmor {

namespace {

[[nodiscard]] bool MakeDemo(const std::string& database, IPrompter& console) {
    CProfile profile;
    Set(profile, setting::databaseDir, database);
    demo::CDemoPrompter prompter(console);
    CVelmorltDoc document(prompter, profile, {});
    demo::CAnimator animator(document, prompter);
    return demo::MakeDemoScene(animator);
}

} // namespace

// The scene is made in a database of its own inside of the wanted one, which gets it when it is whole.
bool RunDemo(const CSceneArguments& arguments) {
    CConsolePrompter console;
    const CScenePaths place(WithSeparator(arguments.database), demo::demoScene);
    if (FolderExists(place.SceneFolder())) {
        console.ShowMessage("Scene already exists. Use 'Open Scene' to open it.");
        return false;
    }
    const Path database = FolderOf(place.SceneFolder());
    const std::optional<CClaimedFolder> making =
        CreateFolder(database) ? CClaimedFolder::Make(database) : std::nullopt;
    if (!making) {
        console.ShowMessage(sceneNotMade);
        return false;
    }
    const std::string own = WithSeparator(Utf8Of(making->Name()));
    if (!MakeDemo(own, console))
        return false;
    if (PlaceScene(CScenePaths(own, demo::demoScene).SceneFolder(), place))
        return true;
    console.ShowMessage(sceneNotMade);
    return false;
}

} // namespace velmor
